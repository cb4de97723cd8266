#pragma once

#include <filesystem>
#include <string_view>

namespace kestro::scenario {

// What every machine does in its folder. Paths are the real ones; failures of the last three are raised as
// base::RuntimeError (75).

/// Makes the program and the data folder below `folder`, the template and the icons of the program folder
/// `installed` in the former. std::filesystem errors come through.
void FurnishMachine(const std::filesystem::path& folder, const std::filesystem::path& installed);
/// Makes the folders on the way when they are missing.
void WriteMachineFile(const std::filesystem::path& file, std::string_view bytes);
/// A missing file is none to remove.
void RemoveMachineFile(const std::filesystem::path& file);
void MakeMachineFileReadOnly(const std::filesystem::path& file);

}  // namespace kestro::scenario
