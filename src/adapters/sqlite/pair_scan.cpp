#include "adapters/sqlite/pair_scan.h"

#include <cstring>

namespace kestro::adapters {
namespace {

constexpr std::size_t kSmallBlock = 8;

/// The compiler's vectors: an operator works on all bytes at once.
template <std::size_t kSize>
struct Vector {
  using Type [[gnu::vector_size(kSize)]] = std::uint8_t;
};

template <std::size_t kSize>
typename Vector<kSize>::Type Load(const void* bytes) {
  typename Vector<kSize>::Type vector;
  std::memcpy(&vector, bytes, kSize);
  return vector;
}

template <typename Lanes>
bool AnySet(const Lanes& lanes) {
  std::uint64_t words[sizeof lanes / sizeof(std::uint64_t)];
  std::memcpy(words, &lanes, sizeof lanes);
  std::uint64_t any = 0;
  for (const std::uint64_t word : words) any |= word;
  return any != 0;
}

}  // namespace

PairScan::Cased::Cased(char folded) {
  character.fill(static_cast<std::uint8_t>(folded));
  case_bit.fill(folded >= 'a' && folded <= 'z' ? 'a' - 'A' : 0);
}

PairScan::PairScan(char first, char second, std::size_t distance)
    : first_(first), second_(second), distance_(distance) {}

template <std::size_t kSize>
bool PairScan::InBlock(const char* block) const {
  const auto difference = [](const char* bytes, const Cased& cased) {
    return (Load<kSize>(bytes) | Load<kSize>(cased.case_bit.data())) ^ Load<kSize>(cased.character.data());
  };
  return AnySet((difference(block, first_) | difference(block + distance_, second_)) == 0);
}

// The last block overlaps the one before.
template <std::size_t kSize>
std::size_t PairScan::SkipBlocks(const char* text, std::size_t position, std::size_t count) const {
  for (; position + kSize < count; position += kSize) {
    if (InBlock<kSize>(text + position)) return position;
  }
  return InBlock<kSize>(text + count - kSize) ? position : count;
}

std::size_t PairScan::Next(std::string_view text, std::size_t position) const {
  if (text.size() <= distance_) return std::string_view::npos;
  const std::size_t count = text.size() - distance_;
  if (count >= kBlock) {
    position = SkipBlocks<kBlock>(text.data(), position, count);
  } else if (count >= kSmallBlock) {
    position = SkipBlocks<kSmallBlock>(text.data(), position, count);
  }
  const auto is = [](char byte, const Cased& cased) {
    return (static_cast<std::uint8_t>(byte) | cased.case_bit[0]) == cased.character[0];
  };
  for (; position < count; ++position) {
    if (is(text[position], first_) && is(text[position + distance_], second_)) return position;
  }
  return std::string_view::npos;
}

}  // namespace kestro::adapters
