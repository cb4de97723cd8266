#include "jet/properties.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "jet/error.h"
#include "jet/stored_text.h"

namespace kestro::jet {
namespace {

constexpr std::array<std::uint8_t, 4> kMark{'M', 'R', '2', 0};
constexpr std::uint16_t kNamesChunk = 0x80;
constexpr std::uint16_t kTableChunk = 0;
constexpr std::uint16_t kColumnChunk = 1;
constexpr std::uint8_t kTrue = 0xFF;
constexpr std::string_view kRequired = "Required";
constexpr std::string_view kAllowEmpty = "AllowZeroLength";
constexpr std::string_view kRule = "ValidationRule";

// Takes a part whose length, itself included, is in its first bytes.
ByteSpan TakePart(ByteSpan& rest, std::size_t length_bytes, std::size_t least) {
  const std::size_t length = length_bytes == 4 ? Load32(rest, 0) : Load16(rest, 0);
  if (length < least) ThrowOutside();
  const ByteSpan part = Part(rest, 0, length);
  rest = rest.subspan(length);
  return part;
}

std::vector<std::string> ReadNames(ByteSpan chunk) {
  std::vector<std::string> names;
  while (!chunk.empty()) {
    const std::size_t length = Load16(chunk, 0);
    names.push_back(DecodeUtf16(Part(chunk, 2, length)));
    chunk = chunk.subspan(2 + length);
  }
  return names;
}

std::string ApplyValue(const std::string& name, ByteSpan value, Column* column) {
  const bool is_set = !value.empty() && value[0] != 0;
  if (name == kRule && !value.empty()) return "The table has validation rules, which are not supported";
  if (column == nullptr) return {};
  if (name == kRequired) column->required = is_set;
  if (name == kAllowEmpty) column->allow_empty_text = is_set;
  return {};
}

std::string ApplyChunk(ByteSpan chunk, const std::vector<std::string>& names, bool of_column,
                       std::vector<Column>& columns) {
  const ByteSpan name_part = TakePart(chunk, 4, 6);
  const std::string owner = DecodeUtf16(Part(name_part, 6, Load16(name_part, 4)));
  const auto found = std::ranges::find(columns, owner, &Column::name);
  Column* column = of_column && found != columns.end() ? &*found : nullptr;
  std::string reason;
  while (!chunk.empty()) {
    const ByteSpan part = TakePart(chunk, 2, 8);
    const std::size_t name = Load16(part, 4);
    if (name >= names.size()) ThrowOutside();
    const std::string found_reason = ApplyValue(names[name], Part(part, 8, Load16(part, 6)), column);
    if (reason.empty()) reason = found_reason;
  }
  return reason;
}

// --- writing ---

void AppendSized(Blob& block, std::size_t length_bytes, ByteSpan content) {
  const std::size_t at = block.size();
  const std::size_t length = length_bytes + content.size();
  block.resize(at + length_bytes);
  if (length_bytes == 4) {
    Store32(block, at, static_cast<std::uint32_t>(length));
  } else {
    Store16(block, at, static_cast<std::uint16_t>(length));
  }
  block.insert(block.end(), content.begin(), content.end());
}

void AppendName(Blob& block, std::string_view name) {
  const std::size_t at = block.size();
  block.resize(at + 2);
  AppendTextBytes(name, TextForm::kPlain, block);
  Store16(block, at, static_cast<std::uint16_t>(block.size() - at - 2));
}

void AppendFlag(Blob& chunk, std::uint8_t name, bool value) {
  constexpr auto kBool = static_cast<std::uint8_t>(ColumnType::kBool);
  const std::uint8_t stored = value ? kTrue : 0;
  AppendSized(chunk, 2, std::array<std::uint8_t, 7>{1, kBool, name, 0, 1, 0, stored});
}

Blob MakeColumnChunk(const Column& column) {
  Blob name;
  AppendName(name, column.name);
  Blob chunk(2);
  Store16(chunk, 0, kColumnChunk);
  AppendSized(chunk, 4, name);
  AppendFlag(chunk, 0, column.required);
  if (column.IsText()) AppendFlag(chunk, 1, column.allow_empty_text);
  return chunk;
}

}  // namespace

std::string ApplyProperties(ByteSpan block, std::vector<Column>& columns) {
  if (block.empty()) return {};
  if (block.size() < kMark.size() || !std::equal(kMark.begin(), kMark.end(), block.begin())) {
    return "The table has properties of an unknown form";
  }
  // A file that has the block says so where empty texts are allowed.
  for (Column& column : columns) {
    if (column.IsText()) column.allow_empty_text = false;
  }
  std::vector<std::string> names;
  std::string reason;
  for (ByteSpan rest = block.subspan(kMark.size()); !rest.empty();) {
    const ByteSpan chunk = TakePart(rest, 4, 6);
    const std::uint16_t type = Load16(chunk, 4);
    if (type == kNamesChunk) {
      names = ReadNames(chunk.subspan(6));
    } else if (type == kTableChunk || type == kColumnChunk) {
      const std::string found = ApplyChunk(chunk.subspan(6), names, type == kColumnChunk, columns);
      if (reason.empty()) reason = found;
    }
  }
  return reason;
}

Blob MakeProperties(const std::vector<Column>& columns) {
  const auto is_special = [](const Column& column) { return column.required || column.IsText(); };
  if (std::ranges::none_of(columns, is_special)) return {};
  Blob block(kMark.begin(), kMark.end());
  Blob names(2);
  Store16(names, 0, kNamesChunk);
  AppendName(names, kRequired);
  AppendName(names, kAllowEmpty);
  AppendSized(block, 4, names);
  for (const Column& column : columns) {
    if (is_special(column)) AppendSized(block, 4, MakeColumnChunk(column));
  }
  return block;
}

}  // namespace kestro::jet
