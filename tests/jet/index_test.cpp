#include <algorithm>
#include <random>
#include <set>
#include <vector>

#include <gtest/gtest.h>

#include "jet/entry_bits.h"
#include "jet/jet_bench.h"

// The pages of an index: the bits of their entries, and trees that grow and shrink in different orders.

namespace kestro::test {
namespace {

using namespace jet;

// The bits moved by words are those of entries kept in a list.
TEST(EntryBits, MoveWithTheEntries) {
  std::mt19937 random(11);
  PageBytes page;
  page.fill(0xFF);  // what is behind the bits must not count, and must stay
  std::fill(page.begin() + kEntryBitsAt, page.begin() + kEntryAreaAt, std::uint8_t{0});
  std::vector<std::size_t> sizes;
  std::size_t used = 0;
  for (int step = 0; step < 4000; ++step) {
    const std::size_t position = random() % (sizes.size() + 1);
    std::size_t start = 0;
    for (std::size_t i = 0; i < position; ++i) start += sizes[i];
    const std::size_t size = 1 + random() % (step % 5 == 0 ? 300 : 20);
    if (position < sizes.size() && (used + size > kEntryAreaSize || step / 500 % 2 == 1)) {
      RemoveEntryBits(page, start, start + sizes[position]);
      used -= sizes[position];
      sizes.erase(sizes.begin() + static_cast<std::ptrdiff_t>(position));
    } else if (used + size <= kEntryAreaSize) {
      InsertEntryBits(page, start, size);
      used += size;
      sizes.insert(sizes.begin() + static_cast<std::ptrdiff_t>(position), size);
    }
    std::size_t at = 0;
    for (const std::size_t one : sizes) {
      ASSERT_EQ(NextEntryEnd(page, at), at + one) << "step " << step;
      ASSERT_EQ(EntryStartAt(page, at + one - 1), at) << "step " << step;
      at += one;
    }
    ASSERT_FALSE(NextEntryEnd(page, at).has_value()) << "step " << step;
  }
  EXPECT_TRUE(std::all_of(page.begin() + kEntryAreaAt, page.end(), [](auto byte) { return byte == 0xFF; }));
}

// Keys of 55 bytes make trees of three levels with few rows.
TableDesign WideDesign() {
  TableDesign design{"Wide", {{.name = "Id", .auto_number = true}}, {}};
  IndexDesign wide{.name = "WideKey", .columns = {}};
  for (int i = 0; i < 10; ++i) {
    design.columns.push_back({.name = "N" + std::to_string(i)});
    wide.columns.push_back("N" + std::to_string(i));
  }
  design.indexes = {{.name = "Key", .columns = {"Id"}, .primary = true}, wide};
  return design;
}

std::vector<Value> WideRow(std::int64_t number) {
  std::vector<Value> row(11, Value(number));
  row[0] = Null();
  return row;
}

class IndexOrder : public testing::TestWithParam<int> {
 protected:
  /// 0 ascending, 1 descending, 2 from both ends, 3 scattered.
  static std::vector<std::size_t> Order(int kind, std::size_t count) {
    std::vector<std::size_t> order(count);
    for (std::size_t i = 0; i < count; ++i) order[i] = i;
    if (kind == 1) std::ranges::reverse(order);
    if (kind == 2) {
      for (std::size_t i = 0; i < count; ++i) order[i] = i % 2 == 0 ? i / 2 : count - 1 - i / 2;
    }
    if (kind == 3) std::shuffle(order.begin(), order.end(), std::mt19937(5));
    return order;
  }
};

TEST_P(IndexOrder, GrowsAndShrinks) {
  constexpr std::size_t kKeys = 3600;
  constexpr std::size_t kRowsPerKey = 2;
  MemoryFileLayer layer;
  const auto database = Database::Create(layer, kDatabase, FixedTime());
  Transaction transaction(*database);
  const auto table = database->CreateTable(WideDesign());
  const PageNumber used_before = database->storage().pager.page_count();
  std::vector<RowId> ids(kKeys * kRowsPerKey);
  for (const std::size_t i : Order(GetParam() / 4, ids.size())) {
    ids[i] = table->Insert(WideRow(static_cast<std::int64_t>(i / kRowsPerKey) - 1000)).id;
  }
  const PageRef root = database->storage().pager.Read(table->definition().real_indexes[1].root);
  EXPECT_EQ(IndexPage(root.bytes()).level(), 2);
  // The number of different keys is kept exactly, also where equal ones lie on two leaves.
  const PageRef definition = database->storage().pager.Read(table->definition().page);
  EXPECT_EQ(Load32(definition.bytes(), kIndexCountersAt + kIndexCountersSize + 4), kKeys);
  ExpectClean(*database);
  const std::vector<std::size_t> order = Order(GetParam() % 4, ids.size());
  for (std::size_t i = 0; i < order.size(); ++i) {
    table->Delete(ids[order[i]]);
    if (i % 1500 == 0) ExpectClean(*database);
  }
  ExpectClean(*database);
  EXPECT_TRUE(IndexPage(root.bytes()).used() == 0 && !IndexPage(root.bytes()).IsNode());
  std::size_t in_use = 0;
  for (PageNumber page = 0; page < database->storage().pager.page_count(); ++page) {
    in_use += database->storage().space.IsFree(page) ? 0U : 1U;
  }
  EXPECT_LE(in_use, used_before + 4U);  // but for pages of usage maps
}

INSTANTIATE_TEST_SUITE_P(All, IndexOrder, testing::Range(0, 16));

}  // namespace
}  // namespace kestro::test
