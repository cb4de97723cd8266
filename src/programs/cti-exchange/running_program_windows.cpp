#ifdef _WIN32

#include <charconv>
#include <cstdlib>

#include "adapters/win32/control_client.h"
#include "programs/cti-exchange/running_program.h"

namespace kestro::programs {
namespace {

constexpr std::uint16_t kDefaultPort = 48112;  // of the telephony library's stand-in

}  // namespace

std::optional<std::string> AskRunningProgram(std::string_view line) {
  const char* const value = std::getenv("KESTRO_TAPI_PORT");
  const std::string_view text = value == nullptr ? "" : value;
  std::uint16_t port = 0;
  std::from_chars(text.data(), text.data() + text.size(), port);
  return adapters::AskControlServer(port == 0 ? kDefaultPort : port, line);
}

}  // namespace kestro::programs

#endif  // _WIN32
