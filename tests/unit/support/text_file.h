#pragma once

#include <algorithm>
#include <functional>
#include <span>
#include <string>
#include <utility>

#include "ports/file_system.h"

namespace kestro::test_support {

/// A file of this text, delivered in blocks of at most `most` bytes; behind its end comes what `behind` does.
class TextFile final : public ports::FileReader {
 public:
  explicit TextFile(std::string text, std::size_t most = SIZE_MAX, std::function<std::size_t()> behind = {})
      : text_(std::move(text)), most_(most), behind_(std::move(behind)) {}
  std::size_t Read(std::span<char> block) override {
    if (position_ == text_.size()) return behind_ ? behind_() : 0;
    const std::size_t count = text_.copy(block.data(), std::min(block.size(), most_), position_);
    position_ += count;
    return count;
  }

 private:
  std::string text_;
  std::size_t most_;
  std::function<std::size_t()> behind_;
  std::size_t position_ = 0;
};

}  // namespace kestro::test_support
