#include "adapters/posix/settings_text.h"

#include <charconv>
#include <optional>

#include "adapters/posix/utf8.h"
#include "base/text.h"

namespace kestro::adapters {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kHeading =
    "# Settings of KESTRO CTI. Values may be edited here; comments are not kept.\n";

void AppendBytesInHex(std::string& text, std::string_view bytes) {
  for (const char byte : bytes) {
    text.append("\\x").append(base::Hex(static_cast<unsigned char>(byte), 2).substr(2));
  }
}

void AppendCharacterEscaped(std::string& text, char32_t character, std::string_view bytes) {
  switch (character) {
    case '\\':
      text.append("\\\\");
      return;
    case '\n':
      text.append("\\n");
      return;
    case '\r':
      text.append("\\r");
      return;
    case '\t':
      text.append("\\t");
      return;
    default:
      if (character == kMalformedByte || IsControlCharacter(character)) return AppendBytesInHex(text, bytes);
      text.append(bytes);
  }
}

/// `special`: further ASCII characters to be escaped.
std::string Escaped(std::string_view text, std::string_view special) {
  std::string escaped;
  const char* const end = text.data() + text.size();
  ForEachCharacter(text, [&](char32_t character, std::string_view bytes) {
    const bool at_an_end = bytes.data() == text.data() || bytes.data() + bytes.size() == end;
    const bool is_special = bytes.size() == 1 && special.find(bytes.front()) != std::string_view::npos;
    if ((character == ' ' && at_an_end) || is_special) {
      AppendBytesInHex(escaped, bytes);
    } else {
      AppendCharacterEscaped(escaped, character, bytes);
    }
  });
  return escaped;
}

/// The byte that the escape at the start of `text` stands for; takes it off the text.
std::optional<char> TakeEscape(std::string_view& text) {
  const char kind = text.size() < 2 ? '\0' : text[1];
  if (kind == 'x' && text.size() >= 4) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(text.data() + 2, text.data() + 4, value, 16);
    if (error != std::errc() || end != text.data() + 4) return std::nullopt;
    text.remove_prefix(4);
    return static_cast<char>(value);
  }
  text.remove_prefix(text.size() < 2 ? text.size() : 2);
  if (kind == '\\') return '\\';
  if (kind == 'n') return '\n';
  if (kind == 'r') return '\r';
  if (kind == 't') return '\t';
  return std::nullopt;
}

std::optional<std::string> Unescaped(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    const std::size_t escape = text.find('\\');
    plain.append(text.substr(0, escape));
    if (escape == std::string_view::npos) break;
    text.remove_prefix(escape);
    const auto byte = TakeEscape(text);
    if (!byte) return std::nullopt;
    plain.push_back(*byte);
  }
  return plain;
}

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

class Parser {
 public:
  /// What is wrong with the line; empty = nothing.
  std::string_view TakeLine(std::string_view line) {
    line = WithoutBlanks(line);
    if (line.empty() || line.front() == '#') return {};
    return line.front() == '[' ? TakeKey(line) : TakeValue(line);
  }

  [[nodiscard]] SettingsTable& settings() { return settings_; }

 private:
  std::string_view TakeKey(std::string_view line) {
    if (line.size() < 2 || line.back() != ']') return "a key without its closing bracket";
    const std::string_view key = line.substr(1, line.size() - 2);
    if (!SettingsTable::IsKey(key)) return "not a key";
    settings_.AddKey(key);
    key_ = key;
    return {};
  }

  std::string_view TakeValue(std::string_view line) {
    const std::size_t separator = line.find('=');
    if (separator == std::string_view::npos) return "neither a key nor a value nor a comment";
    if (key_.empty()) return "a value before the first key";
    const auto name = Unescaped(WithoutBlanks(line.substr(0, separator)));
    const auto text = Unescaped(WithoutBlanks(line.substr(separator + 1)));
    if (!name || !text) return "an unknown escape";
    if (!SettingsTable::IsName(*name)) return "not a name";
    settings_.Set(key_, *name, *text);
    return {};
  }

  SettingsTable settings_;
  std::string_view key_;
};

bool HasForbiddenCharacter(std::string_view line) {
  bool found = false;
  ForEachCharacter(WithoutBlanks(line), [&](char32_t character, std::string_view) {
    found |= character == kMalformedByte || (IsControlCharacter(character) && character != '\t');
  });
  return found;
}

}  // namespace

std::string FormatSettings(const SettingsTable& settings) {
  std::string text(kHeading);
  for (const auto& [folded_key, key] : settings.keys()) {
    text.append("\n[").append(key.name).append("]\n");
    for (const auto& [folded_name, value] : key.values) {
      text.append(Escaped(value.name, "=[#")).append("=").append(Escaped(value.text, "")).append("\n");
    }
  }
  return text;
}

ParsedSettings ParseSettings(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  Parser parser;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    std::string_view damage = parser.TakeLine(line);
    if (HasForbiddenCharacter(line)) damage = "a control character or no UTF-8";
    if (!damage.empty()) return {{}, "line " + std::to_string(number) + ": " + std::string(damage)};
  }
  return {std::move(parser.settings()), {}};
}

}  // namespace kestro::adapters
