#include <utility>

#include "jet/error.h"
#include "jet/index_tree.h"

namespace kestro::jet {
namespace {

using Entry = IndexContent::Entry;

std::ptrdiff_t Offset(std::size_t position) { return static_cast<std::ptrdiff_t>(position); }

}  // namespace

void IndexTree::Erase(ByteSpan key) {
  const Path path = PathTo(key);
  const PageRef held = ReadPage(path.back());
  const IndexPage leaf(held.bytes());
  const std::size_t start = leaf.LowerBound(key);
  if (start == leaf.used() || leaf.CompareEntry(start, leaf.End(start), key) != 0) {
    throw Error(ErrorKind::kDamaged, "An index lacks the entry of a row");
  }
  const std::size_t end = leaf.End(start);
  const bool last = end == leaf.used();
  const bool only = last && start == 0;
  const PageEdit edit = storage_.pager.Edit(path.back());
  if (!RemoveEntryInPlace(edit.edit(), start, end)) {
    IndexContent content = DecodeIndexPage(edit.bytes());
    content.entries.erase(content.entries.begin());
    EncodeIndexPage(content, edit.edit());
  }
  if (path.size() == 1 || !last) return;
  if (only) {
    RemoveLeaf(path);
    return;
  }
  LastEntryChanged(path, path.size() - 1, DecodeIndexPage(edit.bytes()).entries.back().key);
}

// The last entry below path[depth] is another one now: the separator above names it.
void IndexTree::LastEntryChanged(const Path& path, std::size_t depth, const std::vector<std::uint8_t>& last) {
  for (; depth > 0; --depth) {
    IndexContent parent = DecodeIndexPage(ReadPage(path[depth - 1]).bytes());
    const std::size_t position = parent.ChildPosition(path[depth]);
    if (position == parent.entries.size()) continue;
    parent.entries[position].key = last;
    StoreOrSplit(path, depth - 1, std::move(parent), false);
    return;
  }
}

void IndexTree::RemoveLeaf(const Path& path) {
  const PageNumber page = path.back();
  const IndexContent leaf = DecodeIndexPage(ReadPage(page).bytes());
  if (leaf.previous != 0) {
    const PageRef previous = ReadPage(leaf.previous);
    SetLinks(leaf.previous, IndexPage(previous.bytes()).previous(), leaf.next);
  }
  if (leaf.next != 0) {
    const PageRef next = ReadPage(leaf.next);
    SetLinks(leaf.next, leaf.previous, IndexPage(next.bytes()).next());
  }
  RemoveChild(path, path.size() - 2, page);
  DropPage(page);
}

// Takes a child, which has become empty, out of the node path[depth].
void IndexTree::RemoveChild(const Path& path, std::size_t depth, PageNumber child) {
  IndexContent node = DecodeIndexPage(ReadPage(path[depth]).bytes());
  const std::size_t position = node.ChildPosition(child);
  if (node.entries.empty()) throw Error(ErrorKind::kDamaged, "An index node has only one child");
  if (position < node.entries.size()) {
    node.entries.erase(node.entries.begin() + Offset(position));
    ParentLostChild(path, depth, node);
    return;
  }
  const Entry last = std::move(node.entries.back());
  node.entries.pop_back();
  node.tail = last.child;
  Store(path[depth], node);
  LastEntryChanged(path, depth, last.key);
  if (!node.entries.empty()) return;
  // The change above may have split nodes: the way down is looked up again.
  const Path again = PathTo(last.key);
  for (std::size_t i = 0; i < again.size(); ++i) {
    if (again[i] == path[depth]) {
      ParentLostChild(again, i, node);
      return;
    }
  }
  throw Error(ErrorKind::kDamaged, "An index does not lead to its own entries");
}

// A node without entries has its tail only: it is joined with a neighbour, or the tree loses a level.
void IndexTree::ParentLostChild(const Path& path, std::size_t depth, const IndexContent& node) {
  Store(path[depth], node);
  if (!node.entries.empty()) return;
  if (depth == 0) {
    CollapseRoot(node.tail);
  } else {
    JoinNode(path, depth);
  }
}

void IndexTree::CollapseRoot(PageNumber child) {
  IndexContent content = DecodeIndexPage(ReadPage(child).bytes());
  content.previous = 0;
  content.next = 0;
  Store(index_.root, content);
  DropPage(child);
}

void IndexTree::JoinNode(const Path& path, std::size_t depth) {
  IndexContent parent = DecodeIndexPage(ReadPage(path[depth - 1]).bytes());
  const std::size_t position = parent.ChildPosition(path[depth]);
  if (parent.entries.empty()) throw Error(ErrorKind::kDamaged, "An index node has only one child");
  if (position > 0) {
    JoinWithLeft(path, depth, std::move(parent), position);
  } else {
    JoinWithRight(path, depth, std::move(parent), position);
  }
}

// The left sister takes the only child over, or gives one of hers when she is full.
void IndexTree::JoinWithLeft(const Path& path, std::size_t depth, IndexContent parent, std::size_t position) {
  const PageNumber left_page = parent.entries[position - 1].child;
  IndexContent left = DecodeIndexPage(ReadPage(left_page).bytes());
  IndexContent node = DecodeIndexPage(ReadPage(path[depth]).bytes());
  if (!left.node || left.entries.empty()) throw Error(ErrorKind::kDamaged, "An index has uneven levels");
  const Entry middle{parent.entries[position - 1].key, left.tail};
  IndexContent joined = left;
  joined.entries.push_back(middle);
  joined.tail = node.tail;
  joined.next = node.next;
  if (joined.Fits()) {
    Store(left_page, joined);
    if (node.next != 0) {
      const PageRef next = ReadPage(node.next);
      SetLinks(node.next, left_page, IndexPage(next.bytes()).next());
    }
    if (joined.level > 1) RelinkChildren(joined);
    if (position == parent.entries.size()) {
      parent.tail = left_page;
    } else {
      parent.entries[position].child = left_page;
    }
    parent.entries.erase(parent.entries.begin() + Offset(position - 1));
    DropPage(path[depth]);
    ParentLostChild(path, depth - 1, parent);
    return;
  }
  node.entries.push_back(middle);
  parent.entries[position - 1].key = left.entries.back().key;
  left.tail = left.entries.back().child;
  left.entries.pop_back();
  Store(left_page, left);
  Store(path[depth], node);
  if (node.level > 1) {
    RelinkChildren(left);
    RelinkChildren(node);
  }
  StoreOrSplit(path, depth - 1, std::move(parent), false);
}

void IndexTree::JoinWithRight(const Path& path, std::size_t depth, IndexContent parent,
                              std::size_t position) {
  const PageNumber right_page =
      position + 1 < parent.entries.size() ? parent.entries[position + 1].child : parent.tail;
  IndexContent right = DecodeIndexPage(ReadPage(right_page).bytes());
  IndexContent node = DecodeIndexPage(ReadPage(path[depth]).bytes());
  if (!right.node || right.entries.empty()) throw Error(ErrorKind::kDamaged, "An index has uneven levels");
  const Entry middle{parent.entries[position].key, node.tail};
  IndexContent joined = right;
  joined.entries.insert(joined.entries.begin(), middle);
  joined.previous = node.previous;
  if (joined.Fits()) {
    Store(right_page, joined);
    if (joined.level > 1) RelinkChildren(joined);
    parent.entries.erase(parent.entries.begin() + Offset(position));
    DropPage(path[depth]);
    ParentLostChild(path, depth - 1, parent);
    return;
  }
  node.entries.push_back(middle);
  node.tail = right.entries.front().child;
  parent.entries[position].key = right.entries.front().key;
  right.entries.erase(right.entries.begin());
  Store(right_page, right);
  Store(path[depth], node);
  if (node.level > 1) {
    RelinkChildren(right);
    RelinkChildren(node);
  }
  StoreOrSplit(path, depth - 1, std::move(parent), false);
}

}  // namespace kestro::jet
