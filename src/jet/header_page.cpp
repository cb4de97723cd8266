#include "jet/header_page.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>
#include <numeric>
#include <utility>

#include "jet/error.h"

namespace kestro::jet {
namespace {

constexpr std::array<std::uint8_t, 20> kStart{0x00, 0x01, 0x00, 0x00, 'S', 't', 'a', 'n', 'd', 'a',
                                              'r',  'd',  ' ',  'J',  'e', 't', ' ', 'D', 'B', 0x00};
constexpr std::size_t kVersionAt = 0x14;
constexpr std::size_t kMaskedAt = 0x18;
constexpr std::size_t kMaskedSize = 128;
constexpr std::size_t kGlobalMapAt = 0x18;
constexpr std::size_t kSecondMapAt = 0x1C;
constexpr std::size_t kSystemTablesAt = 0x20;
constexpr std::size_t kCodePageAt = 0x3C;
constexpr std::size_t kEncodingKeyAt = 0x3E;
constexpr std::size_t kPasswordAt = 0x42;
constexpr std::size_t kPasswordSize = 40;
constexpr std::size_t kCreatorAt = 0x6A;
constexpr std::size_t kSortOrderAt = 0x6E;
constexpr std::size_t kDateAt = 0x72;
constexpr std::size_t kCommitWordsAt = 0xE00;
constexpr std::uint64_t kCreationDate = 0x40E4AB3E3BD3853EU;  // belongs to the owners in the header

// The fields from 0x18 on are stored under the key stream of this key.
std::array<std::uint8_t, kMaskedSize> KeyStream() {
  constexpr std::array<std::uint8_t, 4> kKey{0xC7, 0xDA, 0x39, 0x6B};
  std::array<std::uint8_t, 256> state{};
  std::iota(state.begin(), state.end(), std::uint8_t{0});
  for (std::size_t i = 0, j = 0; i < state.size(); ++i) {
    j = (j + state[i] + kKey[i % kKey.size()]) % 256;
    std::swap(state[i], state[j]);
  }
  std::array<std::uint8_t, kMaskedSize> stream{};
  std::size_t i = 0;
  std::size_t j = 0;
  for (std::uint8_t& byte : stream) {
    i = (i + 1) % 256;
    j = (j + state[i]) % 256;
    std::swap(state[i], state[j]);
    byte = state[(state[i] + state[j]) % 256];
  }
  return stream;
}

void ApplyMask(MutableBytes page) {
  const std::array<std::uint8_t, kMaskedSize> stream = KeyStream();
  for (std::size_t i = 0; i < kMaskedSize; ++i) {
    page[kMaskedAt + i] = static_cast<std::uint8_t>(page[kMaskedAt + i] ^ stream[i]);
  }
}

[[noreturn]] void Refuse(const char* reason) { throw Error(ErrorKind::kNotADatabase, reason); }

// Without a password its field holds nothing but the day of creation, over and over.
std::uint32_t NoPassword(ByteSpan page) {
  const auto date = std::bit_cast<double>(Load64(page, kDateAt));
  if (!(std::abs(date) < 2147483648.0)) return 0;
  return static_cast<std::uint32_t>(static_cast<std::int32_t>(date));
}

bool HasPassword(ByteSpan page) {
  const std::uint32_t none = NoPassword(page);
  for (std::size_t at = 0; at < kPasswordSize; at += 4) {
    if (Load32(page, kPasswordAt + at) != none) return true;
  }
  return false;
}

}  // namespace

HeaderPage ParseHeaderPage(ByteSpan stored) {
  if (!std::equal(kStart.begin(), kStart.end(), stored.begin())) {
    Refuse("The file is not a database of this format");
  }
  if (Load32(stored, kVersionAt) == 0)
    Refuse("The database has an older format (Jet 3), which is not supported");
  if (Load32(stored, kVersionAt) != 1) Refuse("The database has a newer format, which is not supported");
  std::array<std::uint8_t, kPageSize> page{};
  Copy(page, 0, stored.first(kPageSize));
  ApplyMask(page);
  if (Load32(page, kEncodingKeyAt) != 0) Refuse("The database is encrypted, which is not supported");
  if (HasPassword(page)) Refuse("The database has a password, which is not supported");

  HeaderPage header;
  header.catalog = Load32(page, kSystemTablesAt);
  if (Load32(page, kGlobalMapAt) != DataPointer{1, 0}.Stored()) {
    header.read_only_reason = "The map of free pages is not at its usual place";
  }
  return header;
}

void FillHeaderPage(MutableBytes page) {
  std::copy(kStart.begin(), kStart.end(), page.begin());
  Store32(page, kVersionAt, 1);
  Store32(page, kGlobalMapAt, DataPointer{1, 0}.Stored());
  Store32(page, kSecondMapAt, DataPointer{1, 1}.Stored());
  for (std::uint32_t i = 0; i < 4; ++i) Store32(page, kSystemTablesAt + std::size_t{4} * i, 2 + i);
  Store16(page, kCodePageAt, 1252);
  Store32(page, kCreatorAt, 0x261C);
  Store32(page, kSortOrderAt, 0x0409);
  Store64(page, kDateAt, kCreationDate);
  const std::uint32_t none = NoPassword(page);
  for (std::size_t at = 0; at < kPasswordSize; at += 4) Store32(page, kPasswordAt + at, none);
  ApplyMask(page);
  Store32(page, 0x98, 0x0654);
  Copy(page, 0x9C, std::array<std::uint8_t, 4>{'4', '.', '0', 0});
  for (std::size_t word = 0; word < 256; ++word) {
    Store16(page, kCommitWordsAt + 2 * word, word == 0 ? 0x0101 : 0x0100);
  }
}

}  // namespace kestro::jet
