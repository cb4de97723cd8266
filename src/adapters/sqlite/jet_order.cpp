#include "adapters/sqlite/jet_order.h"

#include <algorithm>
#include <string_view>

#include "adapters/sqlite/text_order.h"

namespace kestro::adapters {
namespace {

struct Entry {
  TextOrderStart start;
  std::size_t offset;  // of the text
  std::uint32_t size;
  std::int32_t key;
};

/// Every row's key and text, the texts one behind the other.
class SortedTexts {
 public:
  SortedTexts(const jet::Table& table, std::size_t column) {
    const std::size_t key_index = table.SearchablePrimaryKey().value();
    const std::size_t key_column = table.indexes()[key_index].columns.front().column;
    entries_.reserve(static_cast<std::size_t>(std::max<std::int64_t>(table.RowCount(), 0)));
    std::string text;
    for (jet::Cursor rows = table.Scan(); rows.Next();) {
      const auto key = static_cast<std::int32_t>(rows.row().Integer(key_column).value_or(0));
      if (rows.row().Text(column, text)) {
        entries_.push_back({StartOfText(text), texts_.size(), static_cast<std::uint32_t>(text.size()), key});
        texts_ += text;
      } else {
        nulls_.push_back(key);
      }
    }
  }

  [[nodiscard]] JetOrder Sort(bool descending) {
    std::ranges::sort(entries_, [this, descending](const Entry& left, const Entry& right) {
      const int order = Compare(left, right);
      if (order != 0) return descending ? order > 0 : order < 0;
      return left.key < right.key;
    });
    std::ranges::sort(nulls_);
    JetOrder order;
    order.reserve(entries_.size() + nulls_.size());
    if (!descending) order = nulls_;
    for (const Entry& entry : entries_) order.push_back(entry.key);
    if (descending) order.insert(order.end(), nulls_.begin(), nulls_.end());
    return order;
  }

 private:
  [[nodiscard]] int Compare(const Entry& left, const Entry& right) const {
    if (left.start != right.start) return left.start < right.start ? -1 : 1;
    return CompareTextOrder(TextOf(left), TextOf(right));
  }
  [[nodiscard]] std::string_view TextOf(const Entry& entry) const {
    return std::string_view(texts_).substr(entry.offset, entry.size);
  }

  std::vector<Entry> entries_;
  std::string texts_;
  JetOrder nulls_;
};

}  // namespace

std::shared_ptr<const JetOrder> JetOrders::Get(const jet::Table& table, std::size_t column, bool descending,
                                               std::uint64_t changes) {
  JetOrderKey key{table.name(), column, descending};
  if (order_ && key == key_ && changes == changes_) return order_;
  order_.reset();  // not in memory together with what is made now
  order_ = std::make_shared<const JetOrder>(SortedTexts(table, column).Sort(descending));
  key_ = std::move(key);
  changes_ = changes;
  return order_;
}

}  // namespace kestro::adapters
