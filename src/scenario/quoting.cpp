#include "scenario/quoting.h"

#include <array>
#include <charconv>

namespace kestro::scenario {
namespace {

bool IsControlCharacter(char character) {
  const auto code = static_cast<unsigned char>(character);
  return code < 0x20 || code == 0x7F;
}

void AppendEscaped(std::string& quoted, char character) {
  static constexpr std::string_view kDigits = "0123456789abcdef";
  switch (character) {
    case '"':
      quoted += "\\\"";
      return;
    case '\\':
      quoted += "\\\\";
      return;
    case '\r':
      quoted += "\\r";
      return;
    case '\n':
      quoted += "\\n";
      return;
    case '\t':
      quoted += "\\t";
      return;
    default:
      break;
  }
  if (!IsControlCharacter(character)) return quoted.push_back(character);
  const auto code = static_cast<unsigned char>(character);
  quoted += {'\\', 'x', kDigits[code / 16], kDigits[code % 16]};
}

}  // namespace

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char character : text) AppendEscaped(quoted, character);
  return quoted.append(1, '"');
}

std::string QuotedPath(std::string_view path) { return "\"" + OneLine(path) + "\""; }

std::string OneLine(std::string_view text) {
  std::string line;
  for (const char character : text) {
    if (IsControlCharacter(character)) {
      AppendEscaped(line, character);
    } else {
      line.push_back(character);
    }
  }
  return line;
}

std::string HandleText(std::uint32_t handle) {
  std::array<char, 8> digits{};
  const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), handle, 16);
  return "0x" + std::string(digits.data(), end);
}

std::string Named(std::string_view name, std::int64_t value) {
  return std::string(" ").append(name).append("=").append(std::to_string(value));
}

}  // namespace kestro::scenario
