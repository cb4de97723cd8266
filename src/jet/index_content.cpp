#include <algorithm>

#include "jet/error.h"
#include "jet/index_page.h"

namespace kestro::jet {
namespace {

[[noreturn]] void ThrowDamaged() { throw Error(ErrorKind::kDamaged, "An index page is damaged"); }

}  // namespace

std::size_t IndexContent::Size(std::size_t prefix) const {
  std::size_t size = 0;
  for (const Entry& entry : entries) size += entry.key.size() + (node ? kChildBytes : 0);
  return entries.empty() ? 0 : size - prefix * (entries.size() - 1);
}

// Sorted entries have in common what the first and the last have. Something of each key must remain.
std::size_t IndexContent::Prefix() const {
  if (entries.size() < 2) return 0;
  const std::vector<std::uint8_t>& first = entries.front().key;
  const std::vector<std::uint8_t>& last = entries.back().key;
  std::size_t limit = first.size();
  for (const Entry& entry : entries) limit = std::min(limit, entry.key.size());
  limit = limit > kRowBytesInKey ? limit - kRowBytesInKey : 0;
  std::size_t prefix = 0;
  while (prefix < limit && first[prefix] == last[prefix]) ++prefix;
  return prefix;
}

std::size_t IndexContent::ChildPosition(PageNumber child) const {
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (entries[i].child == child) return i;
  }
  if (tail != child) ThrowDamaged();
  return entries.size();
}

IndexContent DecodeIndexPage(ByteSpan bytes) {
  const IndexPage page(bytes);
  IndexContent content;
  content.node = page.IsNode();
  content.had_prefix = page.prefix() > 0;
  content.owner = page.owner();
  content.previous = page.previous();
  content.next = page.next();
  content.tail = page.tail();
  content.level = page.level();
  const std::size_t used = page.used();
  IndexKey key;
  for (std::size_t start = 0; start < used;) {
    const std::size_t end = page.End(start);
    if (end > used) ThrowDamaged();
    page.CopyEntry(start, end, key);
    IndexContent::Entry entry;
    entry.key.assign(key.bytes().begin(), key.bytes().end());
    if (content.node) entry.child = page.Child(end);
    content.entries.push_back(std::move(entry));
    start = end;
  }
  return content;
}

void EncodeIndexPage(const IndexContent& content, MutableBytes page) {
  const std::size_t prefix = content.Size(0) <= kEntryAreaSize ? 0 : content.Prefix();
  const std::size_t size = content.Size(prefix);
  if (size > kEntryAreaSize) ThrowDamaged();
  std::ranges::fill(page, std::uint8_t{0});
  Store16(page, 0, PageMark(content.node ? PageType::kIndexNode : PageType::kIndexLeaf));
  Store16(page, 2, static_cast<std::uint16_t>(kEntryAreaSize - size));
  Store32(page, 4, content.owner);
  Store32(page, 12, content.previous);
  Store32(page, 16, content.next);
  Store32(page, 20, content.tail);
  Store16(page, 24, static_cast<std::uint16_t>(prefix));
  Store8(page, 26, content.level);
  std::size_t at = 0;
  for (const IndexContent::Entry& entry : content.entries) {
    const ByteSpan own = ByteSpan(entry.key).subspan(at == 0 ? 0 : prefix);
    Copy(page, kEntryAreaAt + at, own);
    at += own.size();
    if (content.node) {
      StoreBig32(page, kEntryAreaAt + at, entry.child);
      at += kChildBytes;
    }
    std::uint8_t& bits = page[kEntryBitsAt + at / 8];
    bits = static_cast<std::uint8_t>(bits | (1U << (at % 8)));
  }
}

}  // namespace kestro::jet
