#include "scenario/machine_folder.h"

#include <fstream>

#include "base/runtime_error.h"

namespace kestro::scenario {
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

}  // namespace

void FurnishMachine(const fs::path& folder, const fs::path& installed) {
  const fs::path program = folder / "Program";
  fs::create_directory(program);
  fs::create_directory(folder / "Data");
  fs::copy_file(installed / kTemplateName, program / kTemplateName);
  // The folder is removed after the scenario: not every system removes a file that may not be written.
  fs::permissions(program / kTemplateName, fs::perms::owner_write, fs::perm_options::add);
  if (fs::exists(installed / kIconFolder)) fs::copy(installed / kIconFolder, program / kIconFolder);
}

void WriteMachineFile(const fs::path& file, std::string_view bytes) {
  AsRuntimeError([&] {
    fs::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out.exceptions(std::ios::failbit | std::ios::badbit);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
  });
}

void RemoveMachineFile(const fs::path& file) {
  AsRuntimeError([&] { fs::remove(file); });
}

void MakeMachineFileReadOnly(const fs::path& file) {
  AsRuntimeError([&] {
    fs::permissions(file, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
  });
}

}  // namespace kestro::scenario
