#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "jet/file_layer.h"

namespace kestro::test_support {

/// Passes everything on to another file layer after calling `before_change`, which may throw or end the
/// process, before each step that changes something.
class FaultyFiles final : public jet::FileLayer {
 public:
  explicit FaultyFiles(jet::FileLayer& files) : files_(files) {}

  std::function<void()> before_change = [] {};

  std::unique_ptr<jet::File> Open(const std::string& path, jet::FileMode mode) override {
    if (mode == jet::FileMode::kCreate) before_change();
    return std::make_unique<FaultyFile>(*this, files_.Open(path, mode));
  }
  bool Exists(const std::string& path) override { return files_.Exists(path); }
  void Remove(const std::string& path) override {
    before_change();
    files_.Remove(path);
  }
  void SyncFolder(const std::string& path) override {
    before_change();
    files_.SyncFolder(path);
  }

 private:
  class FaultyFile final : public jet::File {
   public:
    FaultyFile(FaultyFiles& layer, std::unique_ptr<jet::File> file) : layer_(layer), file_(std::move(file)) {}
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) override {
      return file_->ReadAt(offset, bytes);
    }
    void WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
      layer_.before_change();
      file_->WriteAt(offset, bytes);
    }
    std::uint64_t Size() override { return file_->Size(); }
    void Truncate(std::uint64_t size) override {
      layer_.before_change();
      file_->Truncate(size);
    }
    void Sync() override {
      layer_.before_change();
      file_->Sync();
    }

   private:
    FaultyFiles& layer_;
    std::unique_ptr<jet::File> file_;
  };

  jet::FileLayer& files_;
};

}  // namespace kestro::test_support
