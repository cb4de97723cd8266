#include "jet/entry_bits.h"

#include <bit>
#include <cstdint>

namespace kestro::jet {
namespace {

constexpr std::size_t kWords = kEntryAreaSize / 64 + 1;
constexpr std::size_t kBitmapBytes = kEntryAreaAt - kEntryBitsAt;

// Of the last word only the bits up to the end of the area count; behind them the entries begin.
std::uint64_t Word(ByteSpan page, std::size_t index) {
  std::uint64_t word = Load64(page, kEntryBitsAt + 8 * index);
  if (index + 1 == kWords) word &= (std::uint64_t{1} << (kEntryAreaSize % 64 + 1)) - 1;
  return word;
}

// The bits 0 to n of a word.
std::uint64_t UpTo(std::size_t n) { return n >= 63 ? ~std::uint64_t{0} : (std::uint64_t{1} << (n + 1)) - 1; }

void StoreWord(MutableBytes page, std::size_t index, std::uint64_t word) {
  const std::size_t at = kEntryBitsAt + 8 * index;
  if (index + 1 < kWords) {
    Store64(page, at, word);
    return;
  }
  for (std::size_t i = 0; i < kBitmapBytes % 8; ++i) {
    Store8(page, at + i, static_cast<std::uint8_t>(word >> (8 * i)));
  }
}

// The bits `count` below those of a word, leaving out the ones at or below `start`.
std::uint64_t WordBelow(ByteSpan page, std::size_t index, std::size_t count, std::size_t start) {
  const auto behind = [&](std::size_t i) {
    const std::uint64_t word = Word(page, i);
    return i > start / 64 ? word : i < start / 64 ? 0 : word & ~UpTo(start % 64);
  };
  const std::size_t whole = count / 64;
  const std::size_t part = count % 64;
  if (index < whole) return 0;
  std::uint64_t word = behind(index - whole) << part;
  if (part != 0 && index > whole) word |= behind(index - whole - 1) >> (64 - part);
  return word;
}

// The bits `count` above those of a word.
std::uint64_t WordAbove(ByteSpan page, std::size_t index, std::size_t count) {
  const std::size_t from = index + count / 64;
  const std::size_t part = count % 64;
  if (from >= kWords) return 0;
  std::uint64_t word = Word(page, from) >> part;
  if (part != 0 && from + 1 < kWords) word |= Word(page, from + 1) << (64 - part);
  return word;
}

}  // namespace

std::optional<std::size_t> NextEntryEnd(ByteSpan page, std::size_t position) {
  std::size_t index = (position + 1) / 64;
  if (position >= kEntryAreaSize) return std::nullopt;
  std::uint64_t word = Word(page, index) & ~(UpTo((position + 1) % 64) >> 1);
  while (word == 0) {
    if (++index == kWords) return std::nullopt;
    word = Word(page, index);
  }
  return index * 64 + static_cast<std::size_t>(std::countr_zero(word));
}

std::size_t EntryStartAt(ByteSpan page, std::size_t position) {
  std::size_t index = position / 64;
  if (index >= kWords) ThrowOutside();
  std::uint64_t word = Word(page, index) & UpTo(position % 64);
  while (word == 0) {
    if (index == 0) return 0;
    word = Word(page, --index);
  }
  return index * 64 + 63 - static_cast<std::size_t>(std::countl_zero(word));
}

bool IsEntryEnd(ByteSpan page, std::size_t position) {
  return (Load8(page, kEntryBitsAt + position / 8) >> (position % 8) & 1) != 0;
}

void InsertEntryBits(MutableBytes page, std::size_t start, std::size_t size) {
  CheckInside(kEntryAreaSize, start, size);
  // From the end on, so that no word is read after it was changed.
  for (std::size_t i = kWords; i-- > start / 64;) {
    const std::uint64_t stay = i == start / 64 ? Word(page, i) & UpTo(start % 64) : 0;
    StoreWord(page, i, stay | WordBelow(page, i, size, start));
  }
  const std::size_t end = start + size;
  page[kEntryBitsAt + end / 8] = static_cast<std::uint8_t>(page[kEntryBitsAt + end / 8] | (1U << (end % 8)));
}

void RemoveEntryBits(MutableBytes page, std::size_t start, std::size_t end) {
  CheckInside(kEntryAreaSize, start, end - start);
  const std::size_t first = start / 64;
  const std::uint64_t kept = UpTo(start % 64);
  const std::uint64_t stay = Word(page, first) & kept;
  StoreWord(page, first, stay | (WordAbove(page, first, end - start) & ~kept));
  for (std::size_t i = first + 1; i < kWords; ++i) StoreWord(page, i, WordAbove(page, i, end - start));
}

}  // namespace kestro::jet
