#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "jet/file_layer.h"

namespace kestro::test {

/// Thrown in place of the operation at which the machine stops, and by every one after it.
struct PowerLoss {};

/// Files in memory, for the engine. Knows what would survive a loss of power, and can stop at any operation
/// that changes something.
class MemoryFileLayer : public jet::FileLayer {
 public:
  using Bytes = std::vector<std::uint8_t>;

  std::unique_ptr<jet::File> Open(const std::string& path, jet::FileMode mode) override;
  bool Exists(const std::string& path) override;
  void Remove(const std::string& path) override;
  void SyncFolder(const std::string& path) override;

  /// The content as programs see it; null when there is no such file.
  [[nodiscard]] const Bytes* Content(const std::string& path) const;
  void Put(const std::string& path, Bytes content);
  void MakeUnremovable(const std::string& path) { unremovable_ = path; }
  void MakeReadOnly(const std::string& path) { read_only_ = path; }

  /// The machine stops at the n-th change from now (1 = the next); 0: never.
  void StopAt(std::size_t n) { stop_at_ = n == 0 ? 0 : changes_ + n; }
  /// That change fails with an error instead, once.
  void FailAt(std::size_t n) { fail_at_ = n == 0 ? 0 : changes_ + n; }
  [[nodiscard]] std::size_t changes() const { return changes_; }

  enum class Loss {
    kNothing,   // only the program ended
    kUnsynced,  // everything that was not synced is gone
    kAnything,  // of that, any part may be gone or torn
  };
  /// The files as they are found when the machine starts again. Open files must be gone.
  [[nodiscard]] std::unique_ptr<MemoryFileLayer> AfterStop(Loss loss, std::uint32_t seed) const;

 private:
  friend class MemoryFile;

  struct Write {
    std::uint64_t offset = 0;
    Bytes bytes;
    bool truncation = false;  // to `offset`
  };
  struct State {
    Bytes content;
    Bytes durable;
    std::vector<Write> unsynced;
    int readers = 0;
    bool writer = false;
  };
  using Names = std::map<std::string, std::shared_ptr<State>>;

  void CountChange();
  static void Apply(const Write& write, Bytes& content);
  static Bytes Torn(const State& state, std::mt19937& random);

  Names names_;
  Names durable_names_;
  std::string unremovable_;
  std::string read_only_;
  std::size_t changes_ = 0;
  std::size_t stop_at_ = 0;
  std::size_t fail_at_ = 0;
};

}  // namespace kestro::test
