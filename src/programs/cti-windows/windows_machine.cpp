#include "programs/cti-windows/windows_machine.h"

#include <algorithm>

#include "adapters/win32/wide_text.h"
#include "base/runtime_error.h"
#include "scenario/machine_folder.h"

namespace kestro::programs {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kDrive = "C:";

std::string Utf8(const fs::path& path) { return adapters::ToUtf8(path.wstring()); }

fs::path Native(const std::string& path) { return {adapters::ToWide(path)}; }

}  // namespace

WindowsMachine::WindowsMachine(const fs::path& folder, const fs::path& installed)
    : folder_(Utf8(folder)),
      files_(std::string(kProgramFolder), std::string(kUserDataFolder),
             [this](std::string_view path) { return RealPath(path); }),
      database_(database_files_, [this](std::string_view path) { return Native(RealPath(path)); }) {
  scenario::FurnishMachine(folder, installed);
}

std::string WindowsMachine::RealPath(std::string_view path) const {
  if (path.find('\0') != std::string_view::npos) base::RaiseFileError(base::kPathNotFound);
  std::string real(path);
  std::replace(real.begin(), real.end(), '/', '\\');
  const bool on_drive =
      real.starts_with(kDrive) && (real.size() == kDrive.size() || real[kDrive.size()] == '\\');
  if (!on_drive) base::RaiseFileError(base::kPathNotFound);
  real.erase(0, kDrive.size());
  if (ports::LeadsOut(real)) base::RaiseFileError(base::kPathNotFound);
  return folder_ + real;
}

void WindowsMachine::WriteFile(std::string_view path, std::string_view bytes) {
  scenario::WriteMachineFile(Native(RealPath(path)), bytes);
}

void WindowsMachine::RemoveFile(std::string_view path) {
  scenario::RemoveMachineFile(Native(RealPath(path)));
}

void WindowsMachine::SetReadOnly(std::string_view path) {
  scenario::MakeMachineFileReadOnly(Native(RealPath(path)));
}

}  // namespace kestro::programs
