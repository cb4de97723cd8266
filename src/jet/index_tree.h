#pragma once

#include <cstddef>
#include <vector>

#include "jet/index_key.h"
#include "jet/index_page.h"
#include "jet/storage.h"
#include "jet/table_definition.h"

namespace kestro::jet {

/// The tree of one index. Targets and keys are compared bytewise; keys to insert and erase end with page and
/// slot. Keys given are trusted, pages read are not.
class IndexTree {
 public:
  IndexTree(Storage& storage, const TableDefinition& definition, const RealIndex& index)
      : storage_(storage), definition_(definition), index_(index) {}

  /// The leaf where `target` belongs, and the first entry in it that is not below; may be the leaf's end.
  struct Place {
    PageRef leaf;
    std::size_t start = 0;
  };
  [[nodiscard]] Place Find(ByteSpan target) const;

  /// Moves on while the place is the end of its leaf; false at the end of the index.
  bool Settle(Place& place) const;

  /// Whether there is an entry with this key (without page and slot).
  [[nodiscard]] bool HasKey(ByteSpan key) const;

  /// Returns whether it is the only entry with this key (without page and slot).
  bool Insert(ByteSpan key);

  /// kDamaged when there is no such entry.
  void Erase(ByteSpan key);

  /// Reads a page of this index; kDamaged when it is none.
  [[nodiscard]] PageRef ReadPage(PageNumber number) const;

  /// Formats the page as an empty index.
  static void FormatRoot(MutableBytes page, PageNumber owner);

  static constexpr std::size_t kMostLevels = 16;

 private:
  using Path = std::vector<PageNumber>;  // from the root to a page

  [[nodiscard]] Path PathTo(ByteSpan target) const;
  [[nodiscard]] bool IsAlone(const Place& place, ByteSpan key) const;
  [[nodiscard]] static PageNumber ChildFor(const IndexPage& node, ByteSpan target);

  void Store(PageNumber page, const IndexContent& content);
  PageNumber NewPage(const IndexContent& content);
  void DropPage(PageNumber page);

  // --- growing ---
  void StoreOrSplit(const Path& path, std::size_t depth, IndexContent content, bool appended);
  void SplitRoot(const IndexContent& left, IndexContent right, const IndexContent::Entry& separator);
  void SplitOther(const Path& path, std::size_t depth, IndexContent left, IndexContent right,
                  IndexContent::Entry separator);
  void SetLinks(PageNumber page, PageNumber previous, PageNumber next);
  void RelinkChildren(const IndexContent& node);

  // --- shrinking ---
  void LastEntryChanged(const Path& path, std::size_t depth, const std::vector<std::uint8_t>& last);
  void RemoveLeaf(const Path& path);
  void RemoveChild(const Path& path, std::size_t depth, PageNumber child);
  void CollapseRoot(PageNumber child);
  void JoinNode(const Path& path, std::size_t depth);
  void JoinWithLeft(const Path& path, std::size_t depth, IndexContent parent, std::size_t position);
  void JoinWithRight(const Path& path, std::size_t depth, IndexContent parent, std::size_t position);
  void ParentLostChild(const Path& path, std::size_t depth, const IndexContent& node);

  Storage& storage_;
  const TableDefinition& definition_;
  const RealIndex& index_;
};

}  // namespace kestro::jet
