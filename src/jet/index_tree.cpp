#include "jet/index_tree.h"

#include "jet/error.h"
#include "jet/usage_map.h"

namespace kestro::jet {
namespace {

[[noreturn]] void ThrowDamaged(const char* what) { throw Error(ErrorKind::kDamaged, what); }

}  // namespace

PageRef IndexTree::ReadPage(PageNumber number) const {
  PageRef page = storage_.pager.Read(number);
  const IndexPage view(page.bytes());
  if (!view.IsIndexPage() || view.owner() != definition_.page) {
    ThrowDamaged("A page of an index is something else");
  }
  return page;
}

PageNumber IndexTree::ChildFor(const IndexPage& node, ByteSpan target) {
  const std::size_t start = node.LowerBound(target);
  return start == node.used() ? node.tail() : node.Child(node.End(start));
}

IndexTree::Place IndexTree::Find(ByteSpan target) const {
  Place place;
  place.leaf = ReadPage(index_.root);
  for (std::size_t level = 0; IndexPage(place.leaf.bytes()).IsNode(); ++level) {
    if (level >= kMostLevels) ThrowDamaged("An index has too many levels");
    place.leaf = ReadPage(ChildFor(IndexPage(place.leaf.bytes()), target));
  }
  place.start = IndexPage(place.leaf.bytes()).LowerBound(target);
  return place;
}

bool IndexTree::Settle(Place& place) const {
  for (PageNumber hops = 0; hops <= storage_.pager.page_count(); ++hops) {
    const IndexPage leaf(place.leaf.bytes());
    if (place.start < leaf.used()) return true;
    const PageNumber next = leaf.next();
    if (next == 0) return false;
    place.leaf = ReadPage(next);
    place.start = 0;
    if (IndexPage(place.leaf.bytes()).IsNode()) ThrowDamaged("The leaves of an index lead to a node");
  }
  ThrowDamaged("The leaves of an index form a circle");
}

bool IndexTree::HasKey(ByteSpan key) const {
  Place place = Find(key);
  if (!Settle(place)) return false;
  const IndexPage leaf(place.leaf.bytes());
  IndexKey entry;
  leaf.CopyEntry(place.start, leaf.End(place.start), entry);
  return Compare(entry.bytes().first(entry.size() - kRowBytesInKey), key) == 0;
}

IndexTree::Path IndexTree::PathTo(ByteSpan target) const {
  Path path{index_.root};
  for (;;) {
    const PageRef page = ReadPage(path.back());
    const IndexPage view(page.bytes());
    if (!view.IsNode()) return path;
    if (path.size() > kMostLevels) ThrowDamaged("An index has too many levels");
    path.push_back(ChildFor(view, target));
  }
}

void IndexTree::Store(PageNumber page, const IndexContent& content) {
  EncodeIndexPage(content, storage_.pager.Edit(page).edit());
}

PageNumber IndexTree::NewPage(const IndexContent& content) {
  PageNumber number = 0;
  {
    const PageEdit page = storage_.space.Allocate();
    number = page.number();
    EncodeIndexPage(content, page.edit());
  }
  UsageMap(storage_.pager, index_.map).Add(storage_.space, number);
  return number;
}

void IndexTree::DropPage(PageNumber page) {
  UsageMap map(storage_.pager, index_.map);
  if (!map.Contains(page) || page == index_.root) ThrowDamaged("A page of an index is not in its map");
  map.Remove(page);
  storage_.space.Free(page);
}

void IndexTree::FormatRoot(MutableBytes page, PageNumber owner) {
  IndexContent content;
  content.owner = owner;
  EncodeIndexPage(content, page);
}

}  // namespace kestro::jet
