#include "adapters/posix/utf8.h"

#include "base/text.h"

namespace kestro::adapters {
namespace {

constexpr char32_t kReplacementCharacter = 0xFFFD;
constexpr char32_t kByteOrderMark = 0xFEFF;

}  // namespace

void ForEachCharacter(std::string_view text, const std::function<void(char32_t, std::string_view)>& visit) {
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t start = position;
    const char32_t character = base::NextCharacter(text, position);
    const std::string_view bytes = text.substr(start, position - start);
    const bool malformed = character == kReplacementCharacter && bytes.size() == 1;
    visit(malformed ? kMalformedByte : character, bytes);
  }
}

bool IsControlCharacter(char32_t character) {
  const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
  const bool line_separator = character == 0x2028 || character == 0x2029;
  return control || line_separator || character == kByteOrderMark;
}

bool HasControlCharacter(std::string_view text) {
  bool found = false;
  ForEachCharacter(text,
                   [&](char32_t character, std::string_view) { found |= IsControlCharacter(character); });
  return found;
}

}  // namespace kestro::adapters
