#pragma once

#include <filesystem>

namespace kestro::scenario {

/// A folder for one scenario: fresh and gone afterwards, or one to keep.
/// std::filesystem errors come through.
class ScenarioFolder {
 public:
  /// A temporary folder for this user alone, removed with this object.
  ScenarioFolder();
  /// The folder given, which must not be there yet (its parents may be missing).
  explicit ScenarioFolder(const std::filesystem::path& keep);
  ~ScenarioFolder();
  ScenarioFolder(const ScenarioFolder&) = delete;
  ScenarioFolder& operator=(const ScenarioFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
  bool keep_ = false;
};

}  // namespace kestro::scenario
