#include "scenario/scenario_folder.h"

#include <random>
#include <string>
#include <system_error>

namespace kestro::scenario {
namespace {

namespace fs = std::filesystem;

constexpr int kMostTries = 100;

fs::path MakeTemporaryFolder() {
  std::random_device random;
  for (int count = 0; count < kMostTries; ++count) {
    fs::path folder = fs::temp_directory_path() / ("cti-scenario-" + std::to_string(random()));
    if (!fs::create_directory(folder)) continue;
    fs::permissions(folder, fs::perms::owner_all);
    return folder;
  }
  throw fs::filesystem_error("temporary folder", std::make_error_code(std::errc::file_exists));
}

/// Where a write-protected file cannot be removed, its protection goes first.
void RemoveAll(const fs::path& folder) {
  std::error_code ignored;
  for (const auto& entry : fs::recursive_directory_iterator(folder, ignored)) {
    fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::add, ignored);
  }
  fs::remove_all(folder, ignored);
}

}  // namespace

ScenarioFolder::ScenarioFolder() : path_(MakeTemporaryFolder()) {}

ScenarioFolder::ScenarioFolder(const fs::path& keep) : path_(fs::absolute(keep)), keep_(true) {
  fs::create_directories(path_.parent_path());
  if (!fs::create_directory(path_)) {
    throw fs::filesystem_error("the folder to keep", path_, std::make_error_code(std::errc::file_exists));
  }
}

ScenarioFolder::~ScenarioFolder() {
  if (!keep_) RemoveAll(path_);
}

}  // namespace kestro::scenario
