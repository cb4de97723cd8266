#include <functional>

#include <gtest/gtest.h>

#include "jet/jet_bench.h"
#include "jet/journal.h"

// The machine stops at every single operation of a commit, and in the middle of the recovery; afterwards the
// database is as before or as after the transaction.

namespace kestro::test {
namespace {

using namespace jet;
using Loss = MemoryFileLayer::Loss;

std::vector<Value> Row(std::int64_t group, std::size_t name, std::size_t notes) {
  return {Null(), group, std::string(name, 'n'), true, std::string(notes, 'm'), Null(), 2.5};
}

// One row short of a split of both roots, when the key index has this many.
constexpr int kRowsBefore = 401;

std::unique_ptr<MemoryFileLayer> Prepared() {
  auto layer = std::make_unique<MemoryFileLayer>();
  const auto database = Database::Create(*layer, kDatabase, FixedTime());
  Transaction transaction(*database);
  const auto table = database->CreateTable(ContactsDesign());
  for (int i = 0; i < kRowsBefore; ++i) table->Insert(Row(i % 5, 10, i % 50 == 0 ? 5000 : 20));
  transaction.Commit();
  CrampMapOfFreePages(*database);
  return layer;
}

std::vector<RowId> RowIds(const Table& table) {
  std::vector<RowId> ids;
  for (Cursor cursor = table.Scan(); cursor.Next();) ids.push_back(cursor.row().id());
  return ids;
}

// Changes every data page. Its journal lies there when the next one is written over it.
void ChangeAllRows(Database& database) {
  const auto table = database.OpenTable("Contacts");
  Transaction transaction(database);
  for (const RowId id : RowIds(*table)) table->Update(id, std::vector<Assignment>{{3, false}});
  transaction.Commit();
}

// Splits the roots, moves a row, writes and frees chains, empties a page, creates a table, and outgrows the
// map of free pages. Calls `arm` before; returns the number of operations up to the end of the commit.
std::size_t RunTransaction(
    MemoryFileLayer& layer, const std::function<void()>& arm = [] {}) {
  const auto database = Database::Open(layer, kDatabase, OpenMode::kReadWrite, FixedTime());
  ChangeAllRows(*database);
  arm();
  const std::size_t start = layer.changes();
  const auto table = database->OpenTable("Contacts");
  const std::vector<RowId> ids = RowIds(*table);
  Transaction transaction(*database);
  table->Insert(Row(3, 20, 9000));
  const std::vector<Assignment> longer{{2, std::string(200, 'w')}, {4, std::string(8000, 'v')}};
  table->Update(ids[7], longer);
  for (std::size_t i = 50; i < 130; ++i) table->Delete(ids[i]);
  database->CreateTable({"Second", {{.name = "Id"}}, {}});
  table->Insert(Row(3, 20, 70'000));
  transaction.Commit();
  return layer.changes() - start;
}

struct Outcomes {
  std::string before;
  std::string after;
};

std::string Recovered(MemoryFileLayer& layer) {
  const auto database = Database::Open(layer, kDatabase, OpenMode::kReadWrite, FixedTime());
  ExpectClean(*database);
  EXPECT_FALSE(layer.Exists(JournalPath(kDatabase)));
  return Dump(*database);
}

Outcomes FindOutcomes(std::size_t& operations) {
  Outcomes outcomes;
  const auto layer = Prepared();
  ChangeAllRows(*Database::Open(*layer, kDatabase, OpenMode::kReadWrite));
  outcomes.before = Recovered(*layer);
  operations = RunTransaction(*layer);
  const auto database = Database::Open(*layer, kDatabase, OpenMode::kReadWrite);
  // The transaction is the one it is meant to be.
  const PageNumber root = database->OpenTable("Contacts")->definition().real_indexes[0].root;
  EXPECT_EQ((*layer->Content(kDatabase))[root * kPageSize], static_cast<int>(PageType::kIndexNode));
  EXPECT_EQ(database->storage().space.OwnPages().size(), 1U);
  outcomes.after = Dump(*database);
  return outcomes;
}

class CrashTest : public testing::Test {
 protected:
  void SetUp() override {
    outcomes_ = FindOutcomes(operations_);
    ASSERT_NE(outcomes_.before, outcomes_.after);
    ASSERT_GT(operations_, 10U);
    prepared_ = *Prepared()->Content(kDatabase);
  }

  /// Stops the transaction at its n-th operation; nothing when it came to its end.
  std::unique_ptr<MemoryFileLayer> StoppedAt(std::size_t n, bool& ended) {
    auto layer = std::make_unique<MemoryFileLayer>();
    layer->Put(kDatabase, prepared_);
    ended = true;
    try {
      RunTransaction(*layer, [&] { layer->StopAt(n); });
    } catch (const PowerLoss&) {
      ended = false;
    }
    return layer;
  }

  struct Way {
    Loss loss;
    std::uint32_t seed;
  };
  static std::vector<Way> Ways() {
    std::vector<Way> ways{{Loss::kNothing, 0}, {Loss::kUnsynced, 0}};
    for (std::uint32_t seed = 1; seed <= 12; ++seed) ways.push_back({Loss::kAnything, seed});
    return ways;
  }

  void ExpectOutcome(const std::string& found, bool must_be_after, const std::string& where) {
    const bool good = found == outcomes_.after || (!must_be_after && found == outcomes_.before);
    EXPECT_TRUE(good) << where << ": neither before nor after";
  }

  Outcomes outcomes_;
  std::size_t operations_ = 0;
  MemoryFileLayer::Bytes prepared_;
};

TEST_F(CrashTest, LeavesAllOrNothing) {
  std::size_t before = 0;
  std::size_t after = 0;
  for (std::size_t n = 1; n <= operations_ + 1; ++n) {
    bool ended = false;
    const auto stopped = StoppedAt(n, ended);
    EXPECT_EQ(ended, n > operations_);
    for (const Way& way : Ways()) {
      const auto layer = stopped->AfterStop(way.loss, way.seed + static_cast<std::uint32_t>(n) * 100);
      const std::string found = Recovered(*layer);
      ExpectOutcome(found, ended, "stop at " + std::to_string(n) + ", seed " + std::to_string(way.seed));
      ++(found == outcomes_.before ? before : after);
    }
  }
  // Both must occur, or the test would not have looked into the interesting moments.
  EXPECT_GT(before, 50U);
  EXPECT_GT(after, 15U);
}

TEST_F(CrashTest, RecoveryMayBeInterruptedToo) {
  std::size_t interrupted = 0;
  for (std::size_t n = 1; n <= operations_; ++n) {
    bool ended = false;
    const auto stopped = StoppedAt(n, ended);
    for (std::size_t m = 1;; ++m) {
      const auto layer = stopped->AfterStop(Loss::kNothing, 0);
      layer->StopAt(m);
      bool recovered = true;
      try {
        (void)Database::Open(*layer, kDatabase, OpenMode::kReadWrite);
      } catch (const PowerLoss&) {
        recovered = false;
        ++interrupted;
      }
      for (const Way& way : {Way{Loss::kNothing, 0}, Way{Loss::kUnsynced, 0}, Way{Loss::kAnything, 7}}) {
        const auto again = layer->AfterStop(way.loss, way.seed + static_cast<std::uint32_t>(n * 1000 + m));
        ExpectOutcome(Recovered(*again), false, "stop at " + std::to_string(n) + " and " + std::to_string(m));
      }
      if (recovered || HasFailure()) break;
    }
  }
  EXPECT_GT(interrupted, 8U);
}

TEST_F(CrashTest, FailingOperationRollsBack) {
  for (std::size_t n = 1; n <= operations_; ++n) {
    MemoryFileLayer layer;
    layer.Put(kDatabase, prepared_);
    EXPECT_THROW(RunTransaction(layer, [&] { layer.FailAt(n); }), Error) << n;
    // Whoever is told of a failure may do it all again: nothing of it may be stored.
    EXPECT_EQ(Recovered(layer), outcomes_.before) << n;
  }
}

TEST_F(CrashTest, FailuresWithoutEndLeaveAllOrNothing) {
  for (std::size_t n = 1; n <= operations_; ++n) {
    MemoryFileLayer layer;
    layer.Put(kDatabase, prepared_);
    const auto fail = [&] { layer.FailAt(n, MemoryFileLayer::Failures::kFromThere); };
    EXPECT_THROW(RunTransaction(layer, fail), Error) << n;
    layer.FailAt(0);
    ExpectOutcome(Recovered(layer), false, "failures from " + std::to_string(n));
  }
}

TEST(Journal, TornOrForeignOnesAreIgnored) {
  const auto prepared = Prepared();
  const std::string before = Recovered(*prepared);
  // A journal that would put zeros over the catalogue.
  MemoryFileLayer maker;
  const std::uint64_t size = prepared->Content(kDatabase)->size();
  maker.Put("zeros", MemoryFileLayer::Bytes(4 * kPageSize));
  const auto make = [&](const char* name) {
    const auto zeros = maker.Open("zeros", FileMode::kRead);
    JournalWriter writer(maker, name, JournalWriter::Place::kNothing, size, 2);
    writer.Add(2, *zeros);
    writer.Add(3, *zeros);
    writer.Finish();
    return *maker.Content(name);
  };
  const MemoryFileLayer::Bytes whole = make("j");
  // The beginning of one that was written over another: the records are the other one's.
  MemoryFileLayer::Bytes begun = make("k");
  std::copy(whole.begin() + 64, whole.end(), begun.begin() + 64);
  std::vector<MemoryFileLayer::Bytes> journals{
      {}, MemoryFileLayer::Bytes(64), MemoryFileLayer::Bytes(10'000), begun};
  for (const std::size_t length : {std::size_t{10}, std::size_t{63}, std::size_t{64}, whole.size() - 1}) {
    journals.emplace_back(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
  }
  for (const std::size_t at : {0U, 12U, 16U, 24U, 36U, 64U, 100U, 4170U, 5000U}) {
    journals.push_back(whole);
    journals.back()[at] ^= 0x10;
  }
  for (const MemoryFileLayer::Bytes& journal : journals) {
    MemoryFileLayer layer;
    layer.Put(kDatabase, *prepared->Content(kDatabase));
    layer.Put(JournalPath(kDatabase), journal);
    const auto read_only = Database::Open(layer, kDatabase, OpenMode::kReadOnly);
    EXPECT_EQ(Dump(*read_only), before);
    const auto other = layer.AfterStop(Loss::kNothing, 0);
    EXPECT_EQ(Recovered(*other), before);
  }
  // The whole one is taken seriously, by readers too.
  MemoryFileLayer layer;
  layer.Put(kDatabase, *prepared->Content(kDatabase));
  layer.Put(JournalPath(kDatabase), whole);
  EXPECT_THROW((void)Database::Open(layer, kDatabase, OpenMode::kReadOnly), Error);
  EXPECT_THROW((void)Database::Open(layer, kDatabase, OpenMode::kReadWrite), Error);
  EXPECT_EQ((*layer.Content(kDatabase))[2 * kPageSize], 0);
}

}  // namespace
}  // namespace kestro::test
