#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "jet/bytes.h"
#include "jet/entry_bits.h"
#include "jet/index_key.h"
#include "jet/page.h"
#include "jet/page_ref.h"

namespace kestro::jet {

inline constexpr std::size_t kChildBytes = 4;

/// Reads an index page in place. Entries lie one behind the other in ascending order; of all but the first
/// the common prefix is left out. A leaf entry is key, page, slot; a node entry adds the child page, and its
/// key is the last one below that child. A node has one more child, its tail, without a key.
///
/// An entry is named by the place where it starts. Throws kDamaged when the page contradicts itself.
class IndexPage {
 public:
  explicit IndexPage(ByteSpan page) : page_(page) {}

  [[nodiscard]] bool IsNode() const { return page_[0] == static_cast<std::uint8_t>(PageType::kIndexNode); }
  [[nodiscard]] bool IsIndexPage() const;
  [[nodiscard]] std::size_t free() const { return Load16(page_, 2); }
  [[nodiscard]] PageNumber owner() const { return Load32(page_, 4); }
  [[nodiscard]] PageNumber previous() const { return Load32(page_, 12); }
  [[nodiscard]] PageNumber next() const { return Load32(page_, 16); }
  [[nodiscard]] PageNumber tail() const { return Load32(page_, 20); }
  [[nodiscard]] std::size_t prefix() const { return Load16(page_, 24); }
  [[nodiscard]] std::uint8_t level() const { return page_[26]; }

  /// Bytes taken by entries.
  [[nodiscard]] std::size_t used() const;

  /// Where the entry at `start` ends.
  [[nodiscard]] std::size_t End(std::size_t start) const;

  /// The first entry that is not below `target`; used() when there is none. A target that is the beginning of
  /// an entry comes before it.
  [[nodiscard]] std::size_t LowerBound(ByteSpan target) const;

  /// Below, equal, above: -1, 0, 1 as seen from the entry.
  [[nodiscard]] int CompareEntry(std::size_t start, std::size_t end, ByteSpan target) const;

  /// Key, page and slot of an entry. kDamaged when it is too long for a key.
  void CopyEntry(std::size_t start, std::size_t end, IndexKey& key) const;

  /// Of a node.
  [[nodiscard]] PageNumber Child(std::size_t end) const;

  /// Page and slot of a leaf entry.
  [[nodiscard]] RowId Row(std::size_t end) const;

 private:
  [[nodiscard]] ByteSpan area() const { return page_.subspan(kEntryAreaAt, kEntryAreaSize); }
  [[nodiscard]] ByteSpan OwnBytes(std::size_t start, std::size_t end) const;
  [[nodiscard]] ByteSpan PrefixFor(std::size_t start) const;

  ByteSpan page_;
};

/// A whole index page in a form that is easy to change.
struct IndexContent {
  struct Entry {
    std::vector<std::uint8_t> key;  // key, page, slot
    PageNumber child = 0;
  };
  bool node = false;
  bool had_prefix = false;
  PageNumber owner = 0;
  PageNumber previous = 0;
  PageNumber next = 0;
  PageNumber tail = 0;
  std::uint8_t level = 0;
  std::vector<Entry> entries;

  /// A page without a prefix is rather split than given one: entries can then be put in without decoding.
  [[nodiscard]] bool Fits() const { return Size(had_prefix ? Prefix() : 0) <= kEntryAreaSize; }

  /// The bytes of the entries with this prefix left out, and the longest possible one.
  [[nodiscard]] std::size_t Size(std::size_t prefix) const;
  [[nodiscard]] std::size_t Prefix() const;

  /// Position of a child; entries.size() for the tail. kDamaged when it is none.
  [[nodiscard]] std::size_t ChildPosition(PageNumber child) const;
};

IndexContent DecodeIndexPage(ByteSpan bytes);

/// Must fit. Without a prefix unless it does not fit otherwise.
void EncodeIndexPage(const IndexContent& content, MutableBytes page);

/// Puts an entry into its place without decoding; false when it takes more than that (no room, a prefix).
bool InsertEntryInPlace(MutableBytes page, std::size_t start, ByteSpan entry);

/// Likewise takes one out.
bool RemoveEntryInPlace(MutableBytes page, std::size_t start, std::size_t end);

}  // namespace kestro::jet
