#include "programs/cti-mdb/dump.h"

#include <array>
#include <charconv>
#include <string>
#include <string_view>

namespace kestro::mdb {
namespace {

void WriteQuoted(std::string_view text, std::ostream& output) {
  output << '"';
  for (const char character : text) {
    if (character == '"') output << '"';
    output << character;
  }
  output << '"';
}

void WriteHex(const jet::Blob& bytes, std::ostream& output) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  for (const std::uint8_t byte : bytes) output << kDigits[byte >> 4] << kDigits[byte & 0x0F];
}

void WriteNumber(double number, std::ostream& output) {
  std::array<char, 64> text{};
  const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
  output << std::string_view(text.data(), static_cast<std::size_t>(result.ptr - text.data()));
}

void WriteValue(const jet::Value& value, std::ostream& output) {
  if (const auto* flag = std::get_if<bool>(&value)) output << (*flag ? 1 : 0);
  if (const auto* integer = std::get_if<std::int64_t>(&value)) output << *integer;
  if (const auto* number = std::get_if<double>(&value)) WriteNumber(*number, output);
  if (const auto* text = std::get_if<std::string>(&value)) WriteQuoted(*text, output);
  if (const auto* bytes = std::get_if<jet::Blob>(&value)) WriteHex(*bytes, output);
}

}  // namespace

void DumpTable(const jet::Table& table, std::ostream& output) {
  const std::size_t count = table.columns().size();
  for (std::size_t i = 0; i < count; ++i) {
    if (i > 0) output << ',';
    WriteQuoted(table.columns()[i].name, output);
  }
  output << '\n';
  jet::Value value;
  for (jet::Cursor cursor = table.Scan(); cursor.Next();) {
    for (std::size_t i = 0; i < count; ++i) {
      if (i > 0) output << ',';
      cursor.row().Get(i, value);
      WriteValue(value, output);
    }
    output << '\n';
  }
}

}  // namespace kestro::mdb
