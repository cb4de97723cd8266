#include "jet/entry_bits.h"

#include <array>
#include <bit>
#include <cstdint>

namespace kestro::jet {
namespace {

constexpr std::size_t kWords = kEntryAreaSize / 64 + 1;
constexpr std::size_t kBitmapBytes = kEntryAreaAt - kEntryBitsAt;

using Words = std::array<std::uint64_t, kWords>;

// Of the last word only the bits up to the end of the area count; behind them the entries begin.
std::uint64_t Word(ByteSpan page, std::size_t index) {
  std::uint64_t word = Load64(page, kEntryBitsAt + 8 * index);
  if (index + 1 == kWords) word &= (std::uint64_t{1} << (kEntryAreaSize % 64 + 1)) - 1;
  return word;
}

// The bits 0 to n of a word.
std::uint64_t UpTo(std::size_t n) { return n >= 63 ? ~std::uint64_t{0} : (std::uint64_t{1} << (n + 1)) - 1; }

Words LoadAll(ByteSpan page) {
  Words words{};
  for (std::size_t i = 0; i < kWords; ++i) words[i] = Word(page, i);
  return words;
}

void StoreAll(MutableBytes page, const Words& words) {
  for (std::size_t i = 0; i < kBitmapBytes; ++i) {
    page[kEntryBitsAt + i] = static_cast<std::uint8_t>(words[i / 8] >> (8 * (i % 8)));
  }
}

// Splits into the bits up to `position` (stay in `words`) and those behind.
Words TakeBehind(Words& words, std::size_t position) {
  Words behind{};
  for (std::size_t i = position / 64; i < kWords; ++i) {
    const std::uint64_t stay = i == position / 64 ? UpTo(position % 64) : 0;
    behind[i] = words[i] & ~stay;
    words[i] &= stay;
  }
  return behind;
}

void AddShiftedUp(Words& words, const Words& bits, std::size_t count) {
  const std::size_t whole = count / 64;
  const std::size_t part = count % 64;
  for (std::size_t i = whole; i < kWords; ++i) {
    words[i] |= bits[i - whole] << part;
    if (part != 0 && i > whole) words[i] |= bits[i - whole - 1] >> (64 - part);
  }
}

void AddShiftedDown(Words& words, const Words& bits, std::size_t count) {
  const std::size_t whole = count / 64;
  const std::size_t part = count % 64;
  for (std::size_t i = 0; i + whole < kWords; ++i) {
    words[i] |= bits[i + whole] >> part;
    if (part != 0 && i + whole + 1 < kWords) words[i] |= bits[i + whole + 1] << (64 - part);
  }
}

void SetBit(Words& words, std::size_t position) {
  words[position / 64] |= std::uint64_t{1} << (position % 64);
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
  Words words = LoadAll(page);
  const Words behind = TakeBehind(words, start);
  AddShiftedUp(words, behind, size);
  SetBit(words, start + size);
  StoreAll(page, words);
}

void RemoveEntryBits(MutableBytes page, std::size_t start, std::size_t end) {
  CheckInside(kEntryAreaSize, start, end - start);
  Words words = LoadAll(page);
  const Words behind = TakeBehind(words, end);
  (void)TakeBehind(words, start);
  AddShiftedDown(words, behind, end - start);
  StoreAll(page, words);
}

}  // namespace kestro::jet
