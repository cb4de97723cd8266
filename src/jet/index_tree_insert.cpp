#include <algorithm>
#include <iterator>
#include <utility>

#include "jet/error.h"
#include "jet/index_tree.h"

namespace kestro::jet {
namespace {

using Entry = IndexContent::Entry;

// The first entry of the right half: where half of the bytes are left of it.
std::size_t MiddleOf(const IndexContent& content) {
  const std::size_t half = content.Size(0) / 2;
  std::size_t size = 0;
  std::size_t middle = 0;
  while (middle + 1 < content.entries.size() && size < half) {
    size += content.entries[middle].key.size() + (content.node ? kChildBytes : 0);
    ++middle;
  }
  return std::max<std::size_t>(middle, 1);
}

IndexContent TakeFrom(IndexContent& left, std::size_t first) {
  IndexContent right = left;
  right.entries.assign(std::make_move_iterator(left.entries.begin() + static_cast<std::ptrdiff_t>(first)),
                       std::make_move_iterator(left.entries.end()));
  left.entries.resize(first);
  return right;
}

// Leaves part between two entries; the separator is the left one's last entry. When entries come in ascending
// order, the left page stays full.
std::pair<IndexContent, Entry> SplitLeaf(IndexContent& left, bool appended) {
  IndexContent right = TakeFrom(left, appended ? left.entries.size() - 1 : MiddleOf(left));
  return {std::move(right), Entry{left.entries.back().key, 0}};
}

// Of a node, the entry in the middle gives its child to the left node as tail, and its key is the separator.
// Both keep an entry at least.
std::pair<IndexContent, Entry> SplitNode(IndexContent& left, bool appended) {
  const std::size_t count = left.entries.size();
  if (count < 3) throw Error(ErrorKind::kDamaged, "An index has entries that are too long");
  const std::size_t middle = appended ? count - 1 : std::clamp<std::size_t>(MiddleOf(left), 2, count - 1);
  IndexContent right = TakeFrom(left, middle);
  Entry separator = std::move(left.entries.back());
  left.entries.pop_back();
  left.tail = separator.child;
  return {std::move(right), std::move(separator)};
}

}  // namespace

// Whether neither neighbour of the place for a new entry has its key.
bool IndexTree::IsAlone(const Place& place, ByteSpan key) const {
  const IndexPage leaf(place.leaf.bytes());
  const ByteSpan wanted = key.first(key.size() - kRowBytesInKey);
  const std::size_t used = leaf.used();
  const bool at_border =
      (place.start == 0 && leaf.previous() != 0) || (place.start == used && leaf.next() != 0);
  if (at_border) return !HasKey(wanted);
  IndexKey neighbour;
  const auto equals = [&](std::size_t start, std::size_t end) {
    leaf.CopyEntry(start, end, neighbour);
    return Compare(neighbour.bytes().first(neighbour.size() - kRowBytesInKey), wanted) == 0;
  };
  if (place.start < used && equals(place.start, leaf.End(place.start))) return false;
  return place.start == 0 || !equals(EntryStartAt(place.leaf.bytes(), place.start - 1), place.start);
}

bool IndexTree::Insert(ByteSpan key) {
  bool alone = false;
  {
    const Place place = Find(key);
    alone = IsAlone(place, key);
    const PageEdit leaf = storage_.pager.Edit(place.leaf.number());
    if (InsertEntryInPlace(leaf.edit(), place.start, key)) return alone;
  }
  const Path path = PathTo(key);
  IndexContent content = DecodeIndexPage(ReadPage(path.back()).bytes());
  const auto less = [](const Entry& entry, ByteSpan wanted) { return Compare(entry.key, wanted) < 0; };
  const auto place = std::lower_bound(content.entries.begin(), content.entries.end(), key, less);
  const bool appended = place == content.entries.end() && content.next == 0;
  content.entries.insert(place, Entry{{key.begin(), key.end()}, 0});
  StoreOrSplit(path, path.size() - 1, std::move(content), appended);
  return alone;
}

void IndexTree::StoreOrSplit(const Path& path, std::size_t depth, IndexContent content, bool appended) {
  if (content.Fits()) {
    Store(path[depth], content);
    return;
  }
  auto [right, separator] = content.node ? SplitNode(content, appended) : SplitLeaf(content, appended);
  if (content.node && content.level > 1) {
    // Nodes are linked with their sisters only.
    RelinkChildren(content);
    RelinkChildren(right);
  }
  if (depth == 0) {
    SplitRoot(content, std::move(right), separator);
  } else {
    SplitOther(path, depth, std::move(content), std::move(right), std::move(separator));
  }
}

// The root stays where it is: its content goes to two new pages.
void IndexTree::SplitRoot(const IndexContent& left, IndexContent right, const Entry& separator) {
  const PageNumber left_page = NewPage(left);
  right.previous = left_page;
  const PageNumber right_page = NewPage(right);
  SetLinks(left_page, 0, right_page);
  IndexContent root;
  root.node = true;
  root.owner = definition_.page;
  root.level = static_cast<std::uint8_t>(left.level + 1);
  root.entries.push_back({separator.key, left_page});
  root.tail = right_page;
  Store(index_.root, root);
}

void IndexTree::SplitOther(const Path& path, std::size_t depth, IndexContent left, IndexContent right,
                           Entry separator) {
  const PageNumber left_page = path[depth];
  right.previous = left_page;
  const PageNumber right_page = NewPage(right);
  if (right.next != 0) {
    const PageRef next = ReadPage(right.next);
    SetLinks(right.next, right_page, IndexPage(next.bytes()).next());
  }
  left.next = right_page;
  Store(left_page, left);

  IndexContent parent = DecodeIndexPage(ReadPage(path[depth - 1]).bytes());
  const std::size_t position = parent.ChildPosition(left_page);
  const bool appended = position == parent.entries.size() && parent.next == 0;
  if (position == parent.entries.size()) {
    parent.tail = right_page;
  } else {
    parent.entries[position].child = right_page;
  }
  separator.child = left_page;
  parent.entries.insert(parent.entries.begin() + static_cast<std::ptrdiff_t>(position), std::move(separator));
  StoreOrSplit(path, depth - 1, std::move(parent), appended);
}

void IndexTree::SetLinks(PageNumber page, PageNumber previous, PageNumber next) {
  (void)ReadPage(page);
  const PageEdit edit = storage_.pager.Edit(page);
  Store32(edit.edit(), 12, previous);
  Store32(edit.edit(), 16, next);
}

void IndexTree::RelinkChildren(const IndexContent& node) {
  std::vector<PageNumber> children;
  for (const Entry& entry : node.entries) children.push_back(entry.child);
  children.push_back(node.tail);
  for (std::size_t i = 0; i < children.size(); ++i) {
    SetLinks(children[i], i == 0 ? 0 : children[i - 1], i + 1 == children.size() ? 0 : children[i + 1]);
  }
}

}  // namespace kestro::jet
