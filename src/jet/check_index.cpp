#include <algorithm>
#include <iterator>
#include <optional>

#include "jet/check_pages.h"
#include "jet/check_rows.h"
#include "jet/index_page.h"
#include "jet/index_tree.h"
#include "jet/usage_map.h"

namespace kestro::jet {
namespace {

using Key = std::vector<std::uint8_t>;

bool Less(const Key& left, const Key& right) { return Compare(left, right) < 0; }

class IndexChecker {
 public:
  IndexChecker(CheckReport& report, Storage& storage, const std::string& who,
               const TableDefinition& definition, const RealIndex& index)
      : report_(report), storage_(storage), who_(who), index_(index), tree_(storage, definition, index) {}

  void Run(ExpectedEntries& expected) {
    ClaimMap(report_, storage_.pager, who_, index_.map);
    Walk(index_.root, 0);
    CheckChain();
    if (UsageMap(storage_.pager, index_.map).All() != SortedPages()) {
      report_.Find(who_ + ": its map does not name its pages");
    }
    report_.result().index_entries += entries_.size();
    if (!std::ranges::is_sorted(entries_, Less) || std::ranges::adjacent_find(entries_) != entries_.end()) {
      report_.Find(who_ + ": the entries are not in order");
    }
    if (index_.IsUnique()) CheckUnique();
    if (!expected.known) return;
    std::ranges::sort(expected.entries, Less);
    std::ranges::sort(entries_, Less);
    CompareEntries(expected.entries);
  }

 private:
  // Returns the last entry below the page, and notes its height.
  std::optional<Key> Walk(PageNumber number, std::size_t depth) {
    if (depth > IndexTree::kMostLevels || !report_.Claim(number, who_)) return std::nullopt;
    pages_.push_back(number);
    const PageRef page = tree_.ReadPage(number);
    const IndexContent content = DecodeIndexPage(page.bytes());
    CheckPage(number, page.bytes(), content);
    if (!content.node) return Leaf(number, content, depth);
    if (content.entries.empty()) report_.Find(OnPage(who_, number) + ": a node with one child only");
    for (const IndexContent::Entry& entry : content.entries) {
      if (Walk(entry.child, depth + 1) != entry.key) {
        report_.Find(OnPage(who_, number) + ": a separator is not the last entry below its child");
      }
    }
    return Walk(content.tail, depth + 1);
  }

  std::optional<Key> Leaf(PageNumber number, const IndexContent& content, std::size_t depth) {
    if (leaves_.empty()) leaf_depth_ = depth;
    if (depth != leaf_depth_) report_.Find(OnPage(who_, number) + ": the leaves are not on one level");
    leaves_.push_back(number);
    for (const IndexContent::Entry& entry : content.entries) entries_.push_back(entry.key);
    if (content.entries.empty()) {
      if (depth > 0) report_.Find(OnPage(who_, number) + ": an empty leaf");
      return std::nullopt;
    }
    return content.entries.back().key;
  }

  void CheckPage(PageNumber number, ByteSpan bytes, const IndexContent& content) {
    const IndexPage page(bytes);
    const std::size_t size = content.Size(page.prefix());
    if (page.free() != kEntryAreaSize - size) report_.Find(OnPage(who_, number) + ": wrong free-space word");
    if (NextEntryEnd(bytes, page.used()))
      report_.Find(OnPage(who_, number) + ": entries behind the last one");
    if (!content.node && content.tail != 0) report_.Find(OnPage(who_, number) + ": a leaf with a child");
  }

  void CheckChain() {
    for (std::size_t i = 0; i < leaves_.size(); ++i) {
      const PageRef page = tree_.ReadPage(leaves_[i]);
      const IndexPage leaf(page.bytes());
      const PageNumber previous = i == 0 ? 0 : leaves_[i - 1];
      const PageNumber next = i + 1 == leaves_.size() ? 0 : leaves_[i + 1];
      if (leaf.previous() != previous || leaf.next() != next) {
        report_.Find(OnPage(who_, leaves_[i]) + ": the chain of leaves differs from the tree");
      }
    }
  }

  [[nodiscard]] std::vector<PageNumber> SortedPages() const {
    std::vector<PageNumber> pages = pages_;
    std::ranges::sort(pages);
    return pages;
  }

  void CheckUnique() {
    const auto same_key = [](const Key& left, const Key& right) {
      // A null is equal to nothing.
      const auto key = [](const Key& entry) { return ByteSpan(entry).first(entry.size() - kRowBytesInKey); };
      return left[0] != kKeyNull && Compare(key(left), key(right)) == 0;
    };
    if (index_.columns.size() == 1 && std::ranges::adjacent_find(entries_, same_key) != entries_.end()) {
      report_.Find(who_ + ": a key comes twice");
    }
  }

  void CompareEntries(const std::vector<Key>& expected) {
    std::vector<Key> difference;
    std::ranges::set_difference(expected, entries_, std::back_inserter(difference), Less);
    if (!difference.empty()) {
      report_.Find(who_ + ": " + std::to_string(difference.size()) + " rows have no entry");
    }
    difference.clear();
    std::ranges::set_difference(entries_, expected, std::back_inserter(difference), Less);
    if (!difference.empty()) {
      report_.Find(who_ + ": " + std::to_string(difference.size()) +
                   " entries belong to no row or have a wrong key");
    }
  }

  CheckReport& report_;
  Storage& storage_;
  const std::string& who_;
  const RealIndex& index_;
  IndexTree tree_;
  std::vector<PageNumber> pages_;
  std::vector<PageNumber> leaves_;
  std::vector<Key> entries_;
  std::size_t leaf_depth_ = 0;
};

}  // namespace

void CheckIndex(CheckReport& report, Storage& storage, const std::string& who,
                const TableDefinition& definition, const RealIndex& index, ExpectedEntries& expected) {
  IndexChecker(report, storage, who, definition, index).Run(expected);
}

}  // namespace kestro::jet
