#include "programs/cti-windows/windows_machine.h"

#include <algorithm>
#include <fstream>

#include "adapters/win32/wide_text.h"
#include "base/runtime_error.h"

namespace kestro::programs {
namespace {

namespace fs = std::filesystem;

constexpr const char* kTemplateName = "DBTemplate.tpl";
constexpr const char* kIconFolder = "Icons";
constexpr std::string_view kDrive = "C:";

std::string Utf8(const fs::path& path) { return adapters::ToUtf8(path.wstring()); }

fs::path Native(const std::string& path) { return {adapters::ToWide(path)}; }

/// Runs a file operation; its failure becomes the run-time error of the system.
template <class Work>
void AsRuntimeError(Work work) {
  try {
    work();
  } catch (const std::exception& error) {
    throw base::RuntimeError(base::kPathAccessError, error.what());
  }
}

}  // namespace

WindowsMachine::WindowsMachine(const fs::path& folder, const fs::path& installed)
    : folder_(Utf8(folder)),
      files_(std::string(kProgramFolder), std::string(kUserDataFolder),
             [this](std::string_view path) { return RealPath(path); }),
      database_(database_files_, [this](std::string_view path) { return Native(RealPath(path)); }) {
  const fs::path program = folder / "Program";
  fs::create_directory(program);
  fs::create_directory(folder / "Data");
  fs::copy_file(installed / kTemplateName, program / kTemplateName);
  fs::permissions(program / kTemplateName, fs::perms::owner_write, fs::perm_options::add);
  if (fs::exists(installed / kIconFolder)) fs::copy(installed / kIconFolder, program / kIconFolder);
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
  AsRuntimeError([&] {
    const fs::path file = Native(RealPath(path));
    fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out.exceptions(std::ios::failbit | std::ios::badbit);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
  });
}

void WindowsMachine::RemoveFile(std::string_view path) {
  AsRuntimeError([&] { fs::remove(Native(RealPath(path))); });
}

void WindowsMachine::SetReadOnly(std::string_view path) {
  AsRuntimeError([&] {
    fs::permissions(Native(RealPath(path)),
                    fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
  });
}

}  // namespace kestro::programs
