#include "jet/long_value.h"

#include <algorithm>

#include "jet/data_page.h"
#include "jet/error.h"
#include "jet/usage_map.h"

namespace kestro::jet {
namespace {

constexpr std::uint32_t kLengthMask = 0x3FFFFFFF;
constexpr std::size_t kChainHeader = 4;
constexpr std::size_t kChainPart = kLongestSingle - kChainHeader;
constexpr int kMostPagesTried = 8;

[[noreturn]] void ThrowDamaged() { throw Error(ErrorKind::kDamaged, "A long value is damaged"); }

struct LongRow {
  PageRef page;
  ByteSpan bytes;
};

LongRow ReadRow(Pager& pager, DataPointer where) {
  LongRow row;
  row.page = pager.Read(where.page);
  const DataPage data(row.page.bytes());
  if (!row.page.Is(PageType::kData) || data.owner() != kLongValueOwner) ThrowDamaged();
  const Slot slot = data.slot(where.slot);
  if (slot.flags != 0) ThrowDamaged();
  row.bytes = data.row(slot);
  return row;
}

// Calls visit(where, part) for each row of the value. Every row of a chain brings at least a byte, so that a
// circle ends when the length is exceeded.
template <typename Visit>
void VisitRows(Pager& pager, const LongHeader& header, Visit visit) {
  DataPointer where = header.where;
  if (header.kind == LongKind::kSingle) {
    const LongRow row = ReadRow(pager, where);
    if (row.bytes.size() != header.length) ThrowDamaged();
    visit(where, row.bytes);
    return;
  }
  std::size_t length = 0;
  while (!where.IsNone()) {
    const LongRow row = ReadRow(pager, where);
    if (row.bytes.size() <= kChainHeader) ThrowDamaged();
    length += row.bytes.size() - kChainHeader;
    if (length > header.length) ThrowDamaged();
    visit(where, row.bytes.subspan(kChainHeader));
    where = DataPointer::FromStored(Load32(row.bytes, 0));
  }
  if (length != header.length) ThrowDamaged();
}

}  // namespace

LongHeader ParseLongHeader(ByteSpan stored) {
  if (stored.size() < kLongHeaderSize) ThrowDamaged();
  LongHeader header;
  const std::uint32_t word = Load32(stored, 0);
  header.length = word & kLengthMask;
  if (word >> 30 > 2) ThrowDamaged();
  header.kind = static_cast<LongKind>(word >> 30);
  header.where = DataPointer::FromStored(Load32(stored, 4));
  if (header.kind == LongKind::kInline && header.length > stored.size() - kLongHeaderSize) ThrowDamaged();
  return header;
}

std::optional<ByteSpan> InlineLongValue(ByteSpan stored) {
  if (stored.size() < kLongHeaderSize) ThrowDamaged();
  const std::uint32_t word = Load32(stored, 0);
  if (static_cast<LongKind>(word >> 30) != LongKind::kInline) return std::nullopt;
  return Part(stored, kLongHeaderSize, word & kLengthMask);
}

void ReadLongValue(Pager& pager, ByteSpan stored, Blob& data) {
  data.clear();
  if (const std::optional<ByteSpan> inside = InlineLongValue(stored)) {
    data.assign(inside->begin(), inside->end());
    return;
  }
  const LongHeader header = ParseLongHeader(stored);
  if (header.length > static_cast<std::size_t>(pager.page_count()) * kPageSize) ThrowDamaged();
  VisitRows(pager, header,
            [&](DataPointer, ByteSpan part) { data.insert(data.end(), part.begin(), part.end()); });
}

std::vector<DataPointer> LongValueRows(Pager& pager, ByteSpan stored) {
  std::vector<DataPointer> rows;
  const LongHeader header = ParseLongHeader(stored);
  if (header.kind == LongKind::kInline) return rows;
  VisitRows(pager, header, [&](DataPointer where, ByteSpan) { rows.push_back(where); });
  return rows;
}

void LongValueStore::Write(ByteSpan data, MutableBytes header) {
  DataPointer where;
  LongKind kind = LongKind::kSingle;
  if (data.size() <= kLongestSingle) {
    where = AddRow(data);
  } else {
    kind = LongKind::kChain;
    // From the end to the front: each row names the one behind it.
    std::vector<std::uint8_t> row;
    for (std::size_t end = data.size(); end > 0;) {
      const std::size_t size = end % kChainPart == 0 ? kChainPart : end % kChainPart;
      row.assign(kChainHeader, 0);
      Store32(row, 0, where.Stored());
      const ByteSpan part = data.subspan(end - size, size);
      row.insert(row.end(), part.begin(), part.end());
      where = AddRow(row);
      end -= size;
    }
  }
  Store32(header, 0, static_cast<std::uint32_t>(data.size()) | (static_cast<std::uint32_t>(kind) << 30));
  Store32(header, 4, where.Stored());
  Store32(header, 8, 0);
}

bool LongValueStore::Fits(PageNumber page, std::size_t size) const {
  const PageRef ref = storage_.pager.Read(page);
  const DataPage data(ref.bytes());
  if (!ref.Is(PageType::kData) || data.owner() != kLongValueOwner) ThrowDamaged();
  return DataPageEdit::HasRoom(data, size);
}

std::optional<PageNumber> LongValueStore::FindPage(std::size_t size) {
  const UsageMap owned(storage_.pager, maps_.owned);
  const PageNumber hint = hints_.long_values;
  if (hint != 0 && owned.Contains(hint) && Fits(hint, size)) return hint;
  const UsageMap free(storage_.pager, maps_.free);
  std::optional<PageNumber> page = free.Next(0);
  for (int tries = 0; page && tries < kMostPagesTried; ++tries, page = free.Next(*page + 1)) {
    if (owned.Contains(*page) && Fits(*page, size)) return page;
  }
  return std::nullopt;
}

DataPointer LongValueStore::AddRow(ByteSpan row) {
  if (const std::optional<PageNumber> page = FindPage(row.size())) return AddToPage(*page, row);
  PageNumber number = 0;
  {
    const PageEdit fresh = storage_.space.Allocate();
    DataPageEdit::Format(fresh.edit(), kLongValueOwner);
    number = fresh.number();
  }
  UsageMap(storage_.pager, maps_.owned).Add(storage_.space, number);
  if (!maps_.free.IsNone()) UsageMap(storage_.pager, maps_.free).Add(storage_.space, number);
  return AddToPage(number, row);
}

DataPointer LongValueStore::AddToPage(PageNumber page, ByteSpan row) {
  constexpr std::size_t kHardlyRoom = 64;
  const PageEdit edit = storage_.pager.Edit(page);
  DataPageEdit data(edit.edit());
  const std::size_t slot = data.Add(row, 0);
  hints_.long_values = page;
  if (data.view().ComputeFree() < kHardlyRoom) UsageMap(storage_.pager, maps_.free).Remove(page);
  return {page, static_cast<std::uint8_t>(slot)};
}

void LongValueStore::Remove(ByteSpan stored) {
  for (const DataPointer where : LongValueRows(storage_.pager, stored)) RemoveRow(where);
}

void LongValueStore::RemoveRow(DataPointer where) {
  UsageMap owned(storage_.pager, maps_.owned);
  UsageMap free(storage_.pager, maps_.free);
  if (!owned.Contains(where.page)) ThrowDamaged();
  const PageEdit edit = storage_.pager.Edit(where.page);
  DataPageEdit data(edit.edit());
  data.Remove(where.slot);
  if (data.view().IsEmpty()) {
    owned.Remove(where.page);
    free.Remove(where.page);
    storage_.space.Free(where.page);
  } else if (!maps_.free.IsNone()) {
    free.Add(storage_.space, where.page);
  }
}

}  // namespace kestro::jet
