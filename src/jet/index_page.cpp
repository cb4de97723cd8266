#include "jet/index_page.h"

#include <cstring>

#include "jet/error.h"

namespace kestro::jet {
namespace {

[[noreturn]] void ThrowDamaged() { throw Error(ErrorKind::kDamaged, "An index page is damaged"); }

}  // namespace

bool IndexPage::IsIndexPage() const {
  const std::uint16_t mark = Load16(page_, 0);
  return mark == PageMark(PageType::kIndexNode) || mark == PageMark(PageType::kIndexLeaf);
}

std::size_t IndexPage::used() const {
  const std::size_t unused = free();
  if (unused > kEntryAreaSize) ThrowDamaged();
  const std::size_t used = kEntryAreaSize - unused;
  if (used != 0 && !IsEntryEnd(page_, used)) ThrowDamaged();
  return used;
}

std::size_t IndexPage::End(std::size_t start) const {
  const std::optional<std::size_t> end = NextEntryEnd(page_, start);
  if (!end) ThrowDamaged();
  return *end;
}

ByteSpan IndexPage::PrefixFor(std::size_t start) const {
  if (start == 0) return {};
  const std::size_t size = prefix();
  if (size > End(0)) ThrowDamaged();
  return area().first(size);
}

// Without the child.
ByteSpan IndexPage::OwnBytes(std::size_t start, std::size_t end) const {
  const std::size_t behind = IsNode() ? kChildBytes : 0;
  if (end > kEntryAreaSize || end < start + behind) ThrowDamaged();
  return area().subspan(start, end - start - behind);
}

int IndexPage::CompareEntry(std::size_t start, std::size_t end, ByteSpan target) const {
  const ByteSpan own = OwnBytes(start, end);
  if (start == 0 || prefix() == 0) return Compare(own, target);
  const ByteSpan before = PrefixFor(start);
  const std::size_t common = before.size() < target.size() ? before.size() : target.size();
  const int order = Compare(before.first(common), target.first(common));
  if (order != 0) return order;
  if (common < before.size()) return 1;
  return Compare(own, target.subspan(common));
}

std::size_t IndexPage::LowerBound(ByteSpan target) const {
  std::size_t low = 0;
  std::size_t high = used();
  // Numbers in ascending order are added at the end: looked at first.
  if (high > 0 && CompareEntry(EntryStartAt(page_, high - 1), high, target) < 0) return high;
  while (low < high) {
    const std::size_t start = EntryStartAt(page_, (low + high) / 2 < high ? (low + high) / 2 : high - 1);
    const std::size_t end = End(start);
    if (start < low || end > high) ThrowDamaged();
    if (CompareEntry(start, end, target) < 0) {
      low = end;
    } else {
      high = start;
    }
  }
  return low;
}

void IndexPage::CopyEntry(std::size_t start, std::size_t end, IndexKey& key) const {
  key.Clear();
  if (!key.Append(PrefixFor(start)) || !key.Append(OwnBytes(start, end)) || key.size() <= kRowBytesInKey) {
    ThrowDamaged();
  }
}

PageNumber IndexPage::Child(std::size_t end) const {
  if (end < kChildBytes) ThrowDamaged();
  return LoadBig32(area(), end - kChildBytes);
}

RowId IndexPage::Row(std::size_t end) const {
  if (end < kRowBytesInKey || IsNode()) ThrowDamaged();
  return {LoadBig24(area(), end - kRowBytesInKey), Load8(area(), end - 1)};
}

bool InsertEntryInPlace(MutableBytes page, std::size_t start, ByteSpan entry) {
  const IndexPage view(page);
  const std::size_t used = view.used();
  if (view.prefix() != 0 || view.free() < entry.size() || start > used) return false;
  const MutableBytes area = page.subspan(kEntryAreaAt, kEntryAreaSize);
  if (start == used) {
    const std::size_t end = used + entry.size();
    std::uint8_t& bits = page[kEntryBitsAt + end / 8];
    bits = static_cast<std::uint8_t>(bits | (1U << (end % 8)));
  } else {
    std::memmove(area.data() + start + entry.size(), area.data() + start, used - start);
    InsertEntryBits(page, start, entry.size());
  }
  Copy(area, start, entry);
  Store16(page, 2, static_cast<std::uint16_t>(view.free() - entry.size()));
  return true;
}

bool RemoveEntryInPlace(MutableBytes page, std::size_t start, std::size_t end) {
  const IndexPage view(page);
  const std::size_t used = view.used();
  if (start >= end || end > used) ThrowDamaged();
  if (start == 0 && view.prefix() != 0) return false;
  const MutableBytes area = page.subspan(kEntryAreaAt, kEntryAreaSize);
  std::memmove(area.data() + start, area.data() + end, used - end);
  RemoveEntryBits(page, start, end);
  Store16(page, 2, static_cast<std::uint16_t>(view.free() + (end - start)));
  return true;
}

}  // namespace kestro::jet
