#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "jet/error.h"
#include "jet/file_layer.h"

namespace kestro::test {

/// Thrown in place of the operation at which the machine stops, and by every one after it.
struct PowerLoss {};

/// Files in memory, for the engine. Knows what would survive a loss of power, and can stop at any operation
/// that changes something.
class MemoryFileLayer : public jet::FileLayer {
 public:
  using Bytes = std::vector<std::uint8_t>;

  std::unique_ptr<jet::File> Open(const std::string& path, jet::FileMode mode) override {
    if (mode == jet::FileMode::kCreate) {
      if (Exists(path)) throw Failure(path + " exists");
      CountChange();
      names_[path] = std::make_shared<State>();
    } else if (!Exists(path)) {
      throw Failure(path + " does not exist", jet::ErrorKind::kNotFound);
    }
    State& state = *names_[path];
    const bool writer = mode != jet::FileMode::kRead;
    if (writer && path == read_only_) throw Failure(path + " may not be written", jet::ErrorKind::kReadOnly);
    if (state.writer || (writer && state.readers > 0)) {
      throw Failure(path + " is in use", jet::ErrorKind::kBusy);
    }
    return std::make_unique<MemoryFile>(*this, names_[path], writer);
  }
  bool Exists(const std::string& path) override { return names_.contains(path); }
  void Remove(const std::string& path) override {
    if (!Exists(path)) return;
    if (path == unremovable_) throw Failure(path + " cannot be removed");
    CountChange();
    names_.erase(path);
  }
  void SyncFolder(const std::string& /*path*/) override {
    CountChange();
    durable_names_ = names_;
  }

  /// The content as programs see it; null when there is no such file.
  [[nodiscard]] const Bytes* Content(const std::string& path) const {
    const auto found = names_.find(path);
    return found == names_.end() ? nullptr : &found->second->content;
  }
  void Put(const std::string& path, const Bytes& content) {
    durable_names_[path] = names_[path] = std::make_shared<State>(State{content, content, {}, 0, false});
  }
  void MakeUnremovable(const std::string& path) { unremovable_ = path; }
  void MakeReadOnly(const std::string& path) { read_only_ = path; }
  /// No file may become larger.
  void SetMostBytes(std::uint64_t bytes) { most_bytes_ = bytes; }

  /// The machine stops at the n-th change from now (1 = the next); 0: never.
  void StopAt(std::size_t n) { stop_at_ = n == 0 ? 0 : changes_ + n; }
  enum class Failures { kOnce, kFromThere };
  /// That change fails with an error instead; 0: none does.
  void FailAt(std::size_t n, Failures failures = Failures::kOnce) {
    fail_at_ = n == 0 ? 0 : changes_ + n;
    failures_ = failures;
  }
  [[nodiscard]] std::size_t changes() const { return changes_; }

  enum class Loss {
    kNothing,   // only the program ended
    kUnsynced,  // everything that was not synced is gone
    kAnything,  // of that, any part may be gone or torn
  };
  /// The files as they are found when the machine starts again. Open files must be gone.
  [[nodiscard]] std::unique_ptr<MemoryFileLayer> AfterStop(Loss loss, std::uint32_t seed) const {
    std::mt19937 random(seed);
    auto after = std::make_unique<MemoryFileLayer>();
    Names names = loss == Loss::kNothing ? names_ : durable_names_;
    if (loss == Loss::kAnything) {
      for (const auto& [path, state] : names_) {
        if (!names.contains(path) && random() % 2 == 0) names[path] = state;
      }
      for (const auto& [path, state] : durable_names_) {
        if (!names_.contains(path) && random() % 2 == 0) names.erase(path);
      }
    }
    for (const auto& [path, state] : names) {
      if (loss == Loss::kAnything) {
        after->Put(path, Torn(*state, random));
      } else {
        after->Put(path, loss == Loss::kNothing ? state->content : state->durable);
      }
    }
    return after;
  }

 private:
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

  class MemoryFile : public jet::File {
   public:
    MemoryFile(MemoryFileLayer& layer, std::shared_ptr<State> state, bool writer)
        : layer_(layer), state_(std::move(state)), writer_(writer) {
      Use(+1);
    }
    ~MemoryFile() override { Use(-1); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) override {
      const Bytes& content = state_->content;
      if (offset >= content.size()) return 0;
      const std::size_t count = std::min<std::size_t>(bytes.size(), content.size() - offset);
      std::copy_n(content.begin() + static_cast<std::ptrdiff_t>(offset), count, bytes.begin());
      return count;
    }
    void WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
      Change({offset, {bytes.begin(), bytes.end()}, false});
    }
    std::uint64_t Size() override { return state_->content.size(); }
    void Truncate(std::uint64_t size) override { Change({size, {}, true}); }
    void Sync() override {
      layer_.CountChange();
      state_->durable = state_->content;
      state_->unsynced.clear();
    }

   private:
    void Use(int change) {
      if (writer_) {
        state_->writer = change > 0;
      } else {
        state_->readers += change;
      }
    }
    void Change(Write write) {
      if (!writer_) throw Failure("written through a reader");
      if (write.offset + write.bytes.size() > layer_.most_bytes_) throw Failure("the disk is full");
      layer_.CountChange();
      Apply(write, state_->content);
      state_->unsynced.push_back(std::move(write));
    }

    MemoryFileLayer& layer_;
    std::shared_ptr<State> state_;
    bool writer_;
  };

  static jet::Error Failure(const std::string& text, jet::ErrorKind kind = jet::ErrorKind::kFileSystem) {
    return {kind, text};
  }

  void CountChange() {
    ++changes_;
    if (stop_at_ != 0 && changes_ >= stop_at_) throw PowerLoss();
    const bool again = failures_ == Failures::kFromThere && changes_ > fail_at_;
    if (fail_at_ != 0 && (changes_ == fail_at_ || again)) throw Failure("the test's own failure");
  }

  static void Apply(const Write& write, Bytes& content) {
    const std::size_t end = write.offset + write.bytes.size();
    if (write.truncation || content.size() < end) content.resize(end);
    std::ranges::copy(write.bytes, content.begin() + static_cast<std::ptrdiff_t>(write.offset));
  }

  // What is left of a file whose last writes were under way: each of them wholly, in part, or not at all.
  static Bytes Torn(const State& state, std::mt19937& random) {
    constexpr std::size_t kSector = 512;
    Bytes content = state.durable;
    for (const Write& write : state.unsynced) {
      if (write.truncation) {
        if (random() % 2 == 0) Apply(write, content);
        continue;
      }
      const bool whole = random() % 4 == 0;
      const bool none = random() % 3 == 0;
      for (std::size_t at = 0; at < write.bytes.size(); at += kSector) {
        if (!whole && (none || random() % 2 == 0)) continue;
        const auto first = write.bytes.begin() + static_cast<std::ptrdiff_t>(at);
        const std::size_t count = std::min(kSector, write.bytes.size() - at);
        Apply({write.offset + at, Bytes(first, first + static_cast<std::ptrdiff_t>(count)), false}, content);
      }
    }
    return content;
  }

  Names names_;
  Names durable_names_;
  std::string unremovable_;
  std::string read_only_;
  std::uint64_t most_bytes_ = UINT64_MAX;
  std::size_t changes_ = 0;
  std::size_t stop_at_ = 0;
  std::size_t fail_at_ = 0;
  Failures failures_ = Failures::kOnce;
};

}  // namespace kestro::test
