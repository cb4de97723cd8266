#include "programs/cti-scenario/posix_machine.h"

#include "scenario/machine_folder.h"

namespace kestro::programs {
namespace {

namespace fs = std::filesystem;

adapters::PathMap MapOf(const fs::path& folder) { return adapters::PathMap({{"C:\\", folder.string()}}); }

}  // namespace

PosixMachine::PosixMachine(const fs::path& folder, const fs::path& installed)
    : paths_(MapOf(folder)),
      files_(paths_, (folder / "Program").string(), (folder / "Data").string()),
      database_(database_files_, [this](std::string_view path) { return paths_.ToNative(path); }) {
  scenario::FurnishMachine(folder, installed);
}

void PosixMachine::WriteFile(std::string_view path, std::string_view bytes) {
  scenario::WriteMachineFile(paths_.ToNative(path), bytes);
}

void PosixMachine::RemoveFile(std::string_view path) { scenario::RemoveMachineFile(paths_.ToNative(path)); }

void PosixMachine::SetReadOnly(std::string_view path) {
  scenario::MakeMachineFileReadOnly(paths_.ToNative(path));
}

}  // namespace kestro::programs
