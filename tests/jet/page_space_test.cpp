#include <gtest/gtest.h>

#include "jet/jet_bench.h"
#include "jet/page_bits.h"

// The map of free pages on its way from a row to pages of its own.

namespace kestro::test {
namespace {

using namespace jet;

// Behind the first page full of bits.
constexpr PageNumber kManyPages = kBitsPerPage + 100;

TEST(PageSpace, OutgrowsItsRowAndAPage) {
  MemoryFileLayer layer;
  const auto database = Database::Create(layer, kDatabase, FixedTime());
  Pager& pager = database->storage().pager;
  PageSpace& space = database->storage().space;
  const MemoryFileLayer::Bytes before = *layer.Content(kDatabase);
  database->Begin();
  while (space.OwnPages().empty()) (void)space.Allocate();
  // 125 MB: what the row has room for.
  EXPECT_EQ(pager.page_count(), 32'034U);
  const std::size_t savepoint = database->BeginSavepoint();
  const std::vector<PageNumber> first = space.OwnPages();
  while (pager.page_count() < kManyPages) (void)space.Allocate();
  ASSERT_EQ(space.OwnPages().size(), 2U);
  for (const PageNumber own : space.OwnPages()) EXPECT_FALSE(space.IsFree(own));
  EXPECT_FALSE(space.IsFree(kManyPages - 1));
  EXPECT_TRUE(space.IsFree(kManyPages));
  EXPECT_TRUE(space.IsFree(2 * kBitsPerPage - 1));
  // The lowest free page is taken first, on either page of bits.
  for (const PageNumber page : {kBitsPerPage + 50, PageNumber{777}, kBitsPerPage + 60}) space.Free(page);
  EXPECT_THROW(space.Free(777), Error);
  for (const PageNumber page : {PageNumber{777}, kBitsPerPage + 50, kBitsPerPage + 60}) {
    EXPECT_EQ(space.Allocate().number(), page);
  }
  database->RollbackToSavepoint(savepoint);
  EXPECT_EQ(space.OwnPages(), first);
  EXPECT_TRUE(space.IsFree(pager.page_count()));
  EXPECT_EQ(space.Allocate().number(), 32'034U);
  database->Rollback();
  EXPECT_TRUE(space.OwnPages().empty());
  EXPECT_EQ(*layer.Content(kDatabase), before);
  ExpectClean(*database);
}

// What the engine meets in files of others: maps that end before the file does, or name wrong pages.
TEST(PageSpace, DistrustsTheMap) {
  MemoryFileLayer layer;
  {
    const auto database = Database::Create(layer, kDatabase, FixedTime());
    CrampMapOfFreePages(*database);
    Transaction transaction(*database);
    const auto table = database->CreateTable(ContactsDesign());
    for (int i = 0; i < 40; ++i)
      table->Insert(std::vector<Value>{Null(), Null(), Null(), true, Null(), Blob(4000), Null()});
    transaction.Commit();
    ASSERT_EQ(database->storage().space.OwnPages().size(), 1U);
  }
  const MemoryFileLayer::Bytes good = *layer.Content(kDatabase);
  const std::size_t row = kPageSize + DataPage(ByteSpan(good).subspan(kPageSize, kPageSize)).slot(0).start;
  const PageNumber bits = Load32(good, row + 1);
  struct Case {
    const char* what;
    PageNumber pointer;
    bool read_only;
  };
  const Case cases[] = {{"unknown kind", bits, true},
                        {"a page of another kind", 2, true},
                        {"behind the end", 100'000, true},
                        {"no bits yet: nothing is free", 0, false}};
  for (const Case& one : cases) {
    MemoryFileLayer::Bytes file = good;
    if (&one == cases) file[row] = 2;
    Store32(file, row + 1, one.pointer);
    MemoryFileLayer changed;
    changed.Put(kDatabase, file);
    const auto database = Database::Open(changed, kDatabase, OpenMode::kReadWrite, FixedTime());
    EXPECT_EQ(!database->ReadOnlyReason().empty(), one.read_only) << one.what;
    EXPECT_FALSE(CheckDatabase(*database).findings.empty()) << one.what;
    if (one.read_only) continue;
    Transaction transaction(*database);
    const PageNumber count = database->storage().pager.page_count();
    EXPECT_GE(database->storage().space.Allocate().number(), count) << one.what;
    EXPECT_THROW(database->storage().space.Free(1), Error);
  }
  {
    // A map that ends before the file does: the pages it leaves out are in use.
    MemoryFileLayer other;
    const auto database = Database::Create(other, kDatabase, FixedTime());
    Transaction transaction(*database);
    PageSpace& space = database->storage().space;
    while (database->storage().pager.page_count() < 100) (void)space.Allocate();
    {
      const PageEdit page = database->storage().pager.Edit(1);
      const MutableBytes shorter = DataPageEdit(page.edit()).Resize(0, 5 + 32 / 8);
      std::fill(shorter.begin(), shorter.end(), std::uint8_t{0});
    }
    EXPECT_EQ(space.Allocate().number(), 100U);
    EXPECT_FALSE(space.IsFree(50));
    EXPECT_TRUE(space.IsFree(101));
  }
  // The page of bits says of itself that it is free: it must not be given away.
  MemoryFileLayer::Bytes file = good;
  file[bits * kPageSize + kPageBitsAt + bits / 8] |= static_cast<std::uint8_t>(1U << (bits % 8));
  MemoryFileLayer changed;
  changed.Put(kDatabase, file);
  const auto database = Database::Open(changed, kDatabase, OpenMode::kReadWrite, FixedTime());
  EXPECT_EQ(CheckDatabase(*database).findings.size(), 1U);
  Transaction transaction(*database);
  EXPECT_THROW((void)database->storage().space.Allocate(), Error);
}

}  // namespace
}  // namespace kestro::test
