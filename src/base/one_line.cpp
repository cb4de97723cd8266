#include "base/one_line.h"

#include "base/text.h"

namespace kestro::base {
namespace {

constexpr char32_t kReplacementCharacter = 0xFFFD;

void AppendHex(std::string& line, std::string_view prefix, char32_t value, int digits) {
  line.append(prefix).append(Hex(static_cast<std::uint32_t>(value), digits).substr(2));
}

void AppendEscaped(std::string& line, char32_t character) {
  switch (character) {
    case '\r':
      line.append("\\r");
      return;
    case '\n':
      line.append("\\n");
      return;
    case '\t':
      line.append("\\t");
      return;
    default:
      if (character > 0xFF) return AppendHex(line, "\\u", character, 4);
      AppendHex(line, "\\x", character, 2);
  }
}

bool NeedsEscape(char32_t character) {
  const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
  const bool breaks_line = character == 0x2028 || character == 0x2029;
  return control || breaks_line;
}

}  // namespace

void AppendOnOneLine(std::string& line, std::string_view text) {
  for (std::size_t position = 0; position < text.size();) {
    const std::size_t start = position;
    const char32_t character = NextCharacter(text, position);
    const std::string_view bytes = text.substr(start, position - start);
    if (character == kReplacementCharacter && bytes.size() == 1) {
      AppendHex(line, "\\x", static_cast<unsigned char>(bytes.front()), 2);
    } else if (NeedsEscape(character)) {
      AppendEscaped(line, character);
    } else {
      line.append(bytes);
    }
  }
}

}  // namespace kestro::base
