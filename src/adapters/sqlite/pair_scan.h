#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kestro::adapters {

/// Looks for two ASCII characters at a distance, whatever their letter case, many bytes at a time.
class PairScan {
 public:
  /// Both are folded: no capital letters. `distance` is in bytes; 0 for one character given twice.
  PairScan(char first, char second, std::size_t distance);

  /// The next position from `position` on where the pair stands; npos without one.
  [[nodiscard]] std::size_t Next(std::string_view text, std::size_t position) const;

 private:
  static constexpr std::size_t kBlock = 16;

  /// A character and the bit in which its letter cases differ, once for every byte of a block.
  struct Cased {
    explicit Cased(char folded);
    std::array<std::uint8_t, kBlock> character{};
    std::array<std::uint8_t, kBlock> case_bit{};
  };

  /// True when the pair begins at one of the next kSize bytes.
  template <std::size_t kSize>
  [[nodiscard]] bool InBlock(const char* block) const;
  /// A position not behind the next pair; `count` when there is none. At least kSize positions are looked at.
  template <std::size_t kSize>
  [[nodiscard]] std::size_t SkipBlocks(const char* text, std::size_t position, std::size_t count) const;

  Cased first_;
  Cased second_;
  std::size_t distance_;
};

}  // namespace kestro::adapters
