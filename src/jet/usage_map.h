#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "jet/page.h"
#include "jet/page_space.h"
#include "jet/pager.h"

namespace kestro::jet {

/// A set of pages, kept in a row of a map page: either the bits themselves from a start page on, or the
/// numbers of pages full of bits. A missing map (pointer 0) is the empty set.
class UsageMap {
 public:
  UsageMap(Pager& pager, DataPointer where) : pager_(&pager), where_(where) {}

  [[nodiscard]] DataPointer where() const { return where_; }
  [[nodiscard]] bool Contains(PageNumber page) const;

  /// The lowest page of the set that is not below `from`.
  [[nodiscard]] std::optional<PageNumber> Next(PageNumber from) const;

  [[nodiscard]] std::vector<PageNumber> All() const;

  /// The pages full of bits.
  [[nodiscard]] std::vector<PageNumber> OwnPages() const;

  /// May take a page for more bits. kMisuse for a missing map.
  void Add(PageSpace& space, PageNumber page);
  void Remove(PageNumber page);

  /// A row of an empty set.
  static constexpr std::size_t kFreshSize = 69;

 private:
  struct Row {
    PageRef page;
    ByteSpan bytes;
    [[nodiscard]] bool IsInline() const { return bytes[0] == 0; }
  };
  [[nodiscard]] Row ReadRow() const;
  [[nodiscard]] static std::optional<PageNumber> NextInline(const Row& row, PageNumber from);
  [[nodiscard]] std::optional<PageNumber> NextReferenced(const Row& row, PageNumber from) const;
  [[nodiscard]] MutableBytes EditRow(const PageEdit& edit) const;
  bool AddInline(const Row& row, PageNumber page);
  void MakeReferenced(PageSpace& space);
  void AddReferenced(PageSpace& space, PageNumber page);

  Pager* pager_;
  DataPointer where_;
};

}  // namespace kestro::jet
