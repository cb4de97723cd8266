#include "jet/memory_file_layer.h"

#include <algorithm>
#include <utility>

#include "jet/error.h"

namespace kestro::test {

using jet::Error;
using jet::ErrorKind;
using jet::FileMode;

class MemoryFile : public jet::File {
 public:
  MemoryFile(MemoryFileLayer& layer, std::shared_ptr<MemoryFileLayer::State> state, bool writer)
      : layer_(layer), state_(std::move(state)), writer_(writer) {
    if (writer_) {
      state_->writer = true;
    } else {
      ++state_->readers;
    }
  }
  ~MemoryFile() override {
    if (writer_) {
      state_->writer = false;
    } else {
      --state_->readers;
    }
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) override {
    const MemoryFileLayer::Bytes& content = state_->content;
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
  void Change(MemoryFileLayer::Write write) {
    if (!writer_) throw Error(ErrorKind::kFileSystem, "written through a reader");
    layer_.CountChange();
    MemoryFileLayer::Apply(write, state_->content);
    state_->unsynced.push_back(std::move(write));
  }

  MemoryFileLayer& layer_;
  std::shared_ptr<MemoryFileLayer::State> state_;
  bool writer_;
};

void MemoryFileLayer::Apply(const Write& write, Bytes& content) {
  if (write.truncation) {
    content.resize(write.offset);
    return;
  }
  if (content.size() < write.offset + write.bytes.size()) content.resize(write.offset + write.bytes.size());
  std::copy(write.bytes.begin(), write.bytes.end(),
            content.begin() + static_cast<std::ptrdiff_t>(write.offset));
}

void MemoryFileLayer::CountChange() {
  ++changes_;
  if (stop_at_ != 0 && changes_ >= stop_at_) throw PowerLoss();
  if (fail_at_ != 0 && changes_ == fail_at_) throw Error(ErrorKind::kFileSystem, "the test's own failure");
}

std::unique_ptr<jet::File> MemoryFileLayer::Open(const std::string& path, FileMode mode) {
  auto found = names_.find(path);
  if (mode == FileMode::kCreate) {
    if (found != names_.end()) throw Error(ErrorKind::kFileSystem, path + " exists");
    CountChange();
    found = names_.emplace(path, std::make_shared<State>()).first;
  } else if (found == names_.end()) {
    throw Error(ErrorKind::kNotFound, path + " does not exist");
  }
  State& state = *found->second;
  const bool writer = mode != FileMode::kRead;
  if (writer && path == read_only_) throw Error(ErrorKind::kReadOnly, path + " may not be written");
  if (state.writer || (writer && state.readers > 0)) throw Error(ErrorKind::kBusy, path + " is in use");
  return std::make_unique<MemoryFile>(*this, found->second, writer);
}

bool MemoryFileLayer::Exists(const std::string& path) { return names_.contains(path); }

void MemoryFileLayer::Remove(const std::string& path) {
  if (!names_.contains(path)) return;
  if (path == unremovable_) throw Error(ErrorKind::kFileSystem, path + " cannot be removed");
  CountChange();
  names_.erase(path);
}

void MemoryFileLayer::SyncFolder(const std::string&) {
  CountChange();
  durable_names_ = names_;
}

const MemoryFileLayer::Bytes* MemoryFileLayer::Content(const std::string& path) const {
  const auto found = names_.find(path);
  return found == names_.end() ? nullptr : &found->second->content;
}

void MemoryFileLayer::Put(const std::string& path, Bytes content) {
  auto state = std::make_shared<State>();
  state->durable = content;
  state->content = std::move(content);
  names_[path] = state;
  durable_names_[path] = state;
}

// What is left of a file whose last writes were under way: each of them wholly, in part, or not at all.
MemoryFileLayer::Bytes MemoryFileLayer::Torn(const State& state, std::mt19937& random) {
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

std::unique_ptr<MemoryFileLayer> MemoryFileLayer::AfterStop(Loss loss, std::uint32_t seed) const {
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
    switch (loss) {
      case Loss::kNothing:
        after->Put(path, state->content);
        break;
      case Loss::kUnsynced:
        after->Put(path, state->durable);
        break;
      case Loss::kAnything:
        after->Put(path, Torn(*state, random));
        break;
    }
  }
  return after;
}

}  // namespace kestro::test
