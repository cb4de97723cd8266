#include "programs/cti-scenario/posix_machine.h"

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <system_error>

#include "adapters/posix/user_folders.h"
#include "base/runtime_error.h"

namespace kestro::programs {
namespace {

namespace fs = std::filesystem;

constexpr const char* kTemplateName = "DBTemplate.tpl";
constexpr const char* kIconFolder = "Icons";

fs::path MakeTemporaryFolder() {
  std::string name = (fs::temp_directory_path() / "cti-scenario-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) {
    throw fs::filesystem_error("temporary folder", name, std::error_code(errno, std::generic_category()));
  }
  return name;
}

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

ScenarioFolder::ScenarioFolder() : path_(MakeTemporaryFolder()) {}

ScenarioFolder::ScenarioFolder(const fs::path& keep) : path_(fs::absolute(keep)), keep_(true) {
  fs::create_directories(path_.parent_path());
  if (!fs::create_directory(path_)) {
    throw fs::filesystem_error("the folder to keep", path_, std::make_error_code(std::errc::file_exists));
  }
}

ScenarioFolder::~ScenarioFolder() {
  std::error_code ignored;
  if (!keep_) fs::remove_all(path_, ignored);
}

PosixMachine::PosixMachine(const ScenarioFolder& folder)
    : paths_(MapOf(folder.path())),
      files_(paths_, (folder.path() / "Program").string(), (folder.path() / "Data").string()),
      database_([this](std::string_view path) { return paths_.ToNative(path); }) {
  const fs::path installed = adapters::ExecutableFolder();
  const fs::path program = folder.path() / "Program";
  fs::create_directory(program);
  fs::create_directory(folder.path() / "Data");
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
