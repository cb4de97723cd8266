#ifndef _WIN32

#include "adapters/posix/control_client.h"
#include "adapters/posix/runtime_folder.h"
#include "programs/cti-exchange/running_program.h"

namespace kestro::programs {

std::optional<std::string> AskRunningProgram(std::string_view line) {
  const adapters::RuntimeFolder folder;
  if (!folder.Exists()) return std::nullopt;
  return adapters::ControlClient(folder.SocketPath()).Ask(line);
}

}  // namespace kestro::programs

#endif  // _WIN32
