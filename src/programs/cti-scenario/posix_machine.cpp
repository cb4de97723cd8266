#include "programs/cti-scenario/posix_machine.h"

#include <fstream>

#include "base/runtime_error.h"

namespace kestro::programs {
namespace {

namespace fs = std::filesystem;

constexpr const char* kTemplateName = "DBTemplate.tpl";
constexpr const char* kIconFolder = "Icons";

/// Runs a file operation; its failure becomes the run-time error of the system.
template <class Work>
void AsRuntimeError(Work work) {
  try {
    work();
  } catch (const std::exception& error) {
    throw base::RuntimeError(base::kPathAccessError, error.what());
  }
}

adapters::PathMap MapOf(const fs::path& folder) { return adapters::PathMap({{"C:\\", folder.string()}}); }

}  // namespace

PosixMachine::PosixMachine(const fs::path& folder, const fs::path& installed)
    : paths_(MapOf(folder)),
      files_(paths_, (folder / "Program").string(), (folder / "Data").string()),
      database_(database_files_, [this](std::string_view path) { return paths_.ToNative(path); }) {
  const fs::path program = folder / "Program";
  fs::create_directory(program);
  fs::create_directory(folder / "Data");
  fs::copy_file(installed / kTemplateName, program / kTemplateName);
  if (fs::exists(installed / kIconFolder)) fs::copy(installed / kIconFolder, program / kIconFolder);
}

void PosixMachine::WriteFile(std::string_view path, std::string_view bytes) {
  AsRuntimeError([&] {
    const fs::path file = paths_.ToNative(path);
    fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out.exceptions(std::ios::failbit | std::ios::badbit);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
  });
}

void PosixMachine::RemoveFile(std::string_view path) {
  AsRuntimeError([&] { fs::remove(paths_.ToNative(path)); });
}

void PosixMachine::SetReadOnly(std::string_view path) {
  AsRuntimeError([&] {
    fs::permissions(paths_.ToNative(path),
                    fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
  });
}

}  // namespace kestro::programs
