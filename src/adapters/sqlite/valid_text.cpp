#include "adapters/sqlite/valid_text.h"

#include <cstdint>
#include <cstring>

#include "base/text.h"

namespace kestro::adapters {

namespace {

/// Eight bytes at a time: next to nothing for the texts that most contacts are made of.
bool IsAscii(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  std::uint64_t bits = 0;
  std::size_t position = 0;
  for (std::uint64_t word = 0; position + sizeof(word) <= text.size(); position += sizeof(word)) {
    std::memcpy(&word, text.data() + position, sizeof(word));
    bits |= word;
  }
  for (; position < text.size(); ++position) bits |= static_cast<unsigned char>(text[position]);
  return (bits & kHighBits) == 0;
}

}  // namespace

std::string ValidText(std::string_view text) {
  if (IsAscii(text)) return std::string(text);
  std::string valid;
  valid.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    base::AppendCharacter(valid, base::NextCharacter(text, position));
  }
  return valid;
}

}  // namespace kestro::adapters
