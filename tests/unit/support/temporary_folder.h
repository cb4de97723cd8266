#pragma once

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace kestro::test_support {

/// Number of entries in a folder.
inline std::ptrdiff_t FileCount(const std::filesystem::path& folder) {
  return std::distance(std::filesystem::directory_iterator(folder), {});
}

/// An empty folder of its own for one test; removed with everything in it at the end.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    static std::atomic<unsigned> counter = 0;
    const auto ticks = std::chrono::steady_clock::now().time_since_epoch().count();
    do {
      path_ = std::filesystem::temp_directory_path() /
              ("kestro-test-" + std::to_string(ticks) + "-" + std::to_string(++counter));
    } while (!std::filesystem::create_directory(path_));
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  [[nodiscard]] std::filesystem::path File(std::string_view name) const {
    return path_ / std::filesystem::path(name);
  }
  [[nodiscard]] std::ptrdiff_t FileCount() const { return test_support::FileCount(path_); }

 private:
  std::filesystem::path path_;
};

inline void WriteFile(const std::filesystem::path& path, std::string_view content) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  if (!file.flush()) throw std::runtime_error("Cannot write " + path.string());
}

inline std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error("Cannot read " + path.string());
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace kestro::test_support
