#include <gtest/gtest.h>

#include "jet/bytes.h"
#include "jet/data_page.h"
#include "jet/jet_bench.h"
#include "jet/usage_map.h"

namespace kestro::test {
namespace {

using namespace jet;

class NewDatabase : public testing::Test {
 protected:
  void SetUp() override {
    Database::Create(layer_, kDatabase, FixedTime());
    bytes_ = *layer_.Content(kDatabase);
  }
  [[nodiscard]] ByteSpan page(std::size_t number) const {
    return ByteSpan(bytes_).subspan(number * kPageSize, kPageSize);
  }

  MemoryFileLayer layer_;
  MemoryFileLayer::Bytes bytes_;
};

TEST_F(NewDatabase, HasItsSixteenPages) {
  ASSERT_EQ(bytes_.size(), 16 * kPageSize);
  const int types[] = {0, 1, 2, 2, 2, 2, 1, 4, 4, 4, 4, 4, 4, 4, 1, 1};
  for (std::size_t i = 0; i < 16; ++i) EXPECT_EQ(page(i)[0], types[i]) << "page " << i;
  const std::size_t lengths[] = {1050, 335, 525, 813};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(Load32(page(2 + i), 8), lengths[i]) << "definition " << i;
    EXPECT_EQ(Load16(page(2 + i), 2), kPageSize - lengths[i] - 8) << "definition " << i;
  }
}

TEST_F(NewDatabase, HasTheMaps) {
  const DataPage global(page(1));
  ASSERT_EQ(global.slot_count(), 2U);
  EXPECT_EQ(global.free(), 0x0F64U);
  EXPECT_EQ(global.slot(0).start, 0xFBBU);
  EXPECT_EQ(global.slot(1).start, 0xF76U);
  EXPECT_EQ(Load32(global.row(0), 0), 0U);
  EXPECT_EQ(Load16(global.row(0), 5), 0x0000U);  // pages 0 to 15 are used
  for (std::size_t i = 7; i < 69; ++i) EXPECT_EQ(global.row(0)[i], 0xFF);

  const DataPage maps(page(6));
  ASSERT_EQ(maps.slot_count(), 31U);
  EXPECT_EQ(maps.free(), kPageSize - 14 - std::size_t{31} * (69 + 2));
  EXPECT_EQ(maps.owner(), 0U);
  struct Used {
    std::size_t row;
    std::size_t page;
  };
  // Rows and room of the two tables with rows, then the roots of the indexes.
  const Used used[] = {{0, 14}, {1, 14},  {16, 7},  {17, 8},  {18, 15}, {19, 15},
                       {20, 9}, {25, 10}, {28, 11}, {29, 12}, {30, 13}};
  for (std::size_t row = 0; row < 31; ++row) {
    std::size_t expected = 0;
    for (const Used& one : used) {
      if (one.row == row) expected = std::size_t{1} << one.page;
    }
    EXPECT_EQ(Load16(maps.row(row), 5), expected) << "map " << row;
  }
}

TEST_F(NewDatabase, HeaderDecodes) {
  const ByteSpan header = page(0);
  EXPECT_EQ(Load32(header, 0x14), 1U);
  EXPECT_EQ(Load32(header, 0x98), 0x654U);
  EXPECT_EQ(Load16(header, 0xE00), 0x0101U);
  EXPECT_EQ(Load16(header, 0xFFE), 0x0100U);
  // The place of the map of free pages, under the mask.
  EXPECT_EQ(Load32(header, 0x18), 0x62036EB5U);
}

TEST_F(NewDatabase, SystemRowsAreThere) {
  const auto database = Database::Open(layer_, kDatabase, OpenMode::kReadOnly);
  ExpectClean(*database);
  EXPECT_TRUE(database->Tables().empty());
  EXPECT_EQ(database->OpenTable("MSysObjects")->RowCount(), 8);
  EXPECT_EQ(database->OpenTable("MSysACEs")->RowCount(), 16);
  const auto objects = database->OpenTable("MSysObjects");
  std::string names;
  std::string name;
  for (Cursor cursor = objects->Scan(); cursor.Next();) {
    cursor.row().Text(*objects->FindColumn("Name"), name);
    names += name + " ";
  }
  EXPECT_EQ(names,
            "Tables Databases Relationships MSysDb MSysObjects MSysACEs MSysQueries MSysRelationships ");
}

TEST(CreateTable, GivesAllPagesBackWhenDropped) {
  MemoryFileLayer layer;
  const auto database = Database::Create(layer, kDatabase, FixedTime());
  for (int round = 0; round < 3; ++round) {
    Transaction transaction(*database);
    const auto table = database->CreateTable(ContactsDesign());
    for (int i = 0; i < 300; ++i) {
      table->Insert(std::vector<Value>{Null(), std::int64_t{i % 7}, "row", true, std::string(6000, 'x'),
                                       Blob(300), 1.5});
    }
    database->DropTable("contacts");
    EXPECT_THROW((void)table->RowCount(), Error);
    transaction.Commit();
    ExpectClean(*database);
    // Only the pages of the catalogue stay taken.
    std::size_t used = 0;
    const PageNumber pages = database->storage().pager.page_count();
    for (PageNumber i = 0; i < pages; ++i) used += database->storage().space.IsFree(i) ? 0U : 1U;
    EXPECT_EQ(used, 16U);
  }
}

TEST(CreateTable, LongDefinitionTakesSeveralPages) {
  MemoryFileLayer layer;
  TableDesign design;
  design.name = "Wide";
  for (int i = 0; i < 200; ++i) {
    design.columns.push_back({.name = "A column with a rather long name " + std::to_string(i),
                              .type = i % 2 == 0 ? ColumnType::kInt32 : ColumnType::kText});
  }
  {
    const auto database = Database::Create(layer, kDatabase, FixedTime());
    Transaction transaction(*database);
    const auto table = database->CreateTable(design);
    EXPECT_GT(table->definition().pages.size(), 3U);
    std::vector<Value> row(200);
    row[198] = std::int64_t{42};
    row[199] = "last";
    table->Insert(row);
    transaction.Commit();
  }
  const auto database = Database::Open(layer, kDatabase, OpenMode::kReadOnly);
  ExpectClean(*database);
  const auto table = database->OpenTable("Wide");
  Cursor cursor = table->Scan();
  ASSERT_TRUE(cursor.Next());
  EXPECT_EQ(cursor.row().Integer(198), 42);
  EXPECT_EQ(std::get<std::string>(cursor.row().Get(199)), "last");
}

}  // namespace
}  // namespace kestro::test
