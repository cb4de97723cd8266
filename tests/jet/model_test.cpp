#include <cstdlib>
#include <map>
#include <optional>
#include <random>

#include <gtest/gtest.h>

#include "jet/jet_bench.h"

// Random changes, savepoints, rollbacks and reopenings against a map that does the same. The number of
// operations comes from JET_TEST_OPERATIONS.

namespace kestro::test {
namespace {

using namespace jet;

constexpr std::size_t kUsualOperations = 50'000;
constexpr std::size_t kOperationsBetweenChecks = 10'000;
constexpr std::size_t kPhase = 6'000;  // operations in which rows become more, or fewer
constexpr std::size_t kMostRows = 2'500;

struct ModelRow {
  Value group;
  Value name;
  bool active = false;
  Value notes;
  Value picture;
};
using Model = std::map<std::int64_t, std::shared_ptr<const ModelRow>>;

class ModelTest : public testing::Test {
 protected:
  void SetUp() override {
    database_ = Database::Create(layer_, kDatabase, Options());
    Transaction transaction(*database_);
    database_->CreateTable(ContactsDesign());
    transaction.Commit();
    table_ = database_->OpenTable("Contacts");
    CrampMapOfFreePages(*database_);
    Begin();
  }

  static DatabaseOptions Options() {
    DatabaseOptions options = FixedTime();
    options.cache_pages = 40;  // small, so that pages come and go
    return options;
  }

  std::size_t Below(std::size_t bound) { return random_() % bound; }
  bool OneIn(std::size_t n) { return Below(n) == 0; }

  Value RandomText(std::size_t most) {
    if (OneIn(6)) return Null();
    std::string text;
    const char* const letters[] = {"a", "Z", " ", "\xC3\xA4", "\xC5\x88", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"};
    const std::size_t kinds = OneIn(3) ? 7 : 4;  // Latin-1 only, or any
    for (std::size_t length = Below(most + 1); length > 0; --length) text += letters[Below(kinds)];
    return text;
  }
  Value RandomLong() {
    // In the row, in a row of its own, in a chain.
    const std::size_t most[] = {10, 30, 200, 1500, 3500, 9000};
    return RandomText(most[Below(6)]);
  }
  Value RandomBlob() {
    if (OneIn(2)) return Null();
    return Blob(Below(OneIn(10) ? 12'000 : 100), static_cast<std::uint8_t>(Below(256)));
  }
  ModelRow RandomRow() {
    ModelRow row;
    if (!OneIn(5)) row.group = static_cast<std::int64_t>(Below(9)) - 4;
    row.name = RandomText(60);
    row.active = OneIn(2);
    row.notes = RandomLong();
    row.picture = RandomBlob();
    return row;
  }

  static std::vector<Value> Values(const Value& id, const ModelRow& row) {
    return {id, row.group, row.name, row.active, row.notes, row.picture, 1.25};
  }

  std::int64_t RandomId() {
    if (model_.empty() || OneIn(20)) return static_cast<std::int64_t>(Below(10'000));
    const auto found =
        model_.lower_bound(static_cast<std::int64_t>(Below(static_cast<std::size_t>(highest_) + 1)));
    return found == model_.end() ? model_.begin()->first : found->first;
  }

  std::optional<RowId> FindRow(std::int64_t id) {
    IndexCursor cursor = table_->Search(*table_->SearchablePrimaryKey(), {id, id});
    if (!cursor.Next()) return std::nullopt;
    EXPECT_EQ(cursor.key(), id);
    return cursor.id();
  }

  void Insert() {
    const ModelRow row = RandomRow();
    Value id;
    if (OneIn(8)) id = RandomId();
    if (const auto* given = std::get_if<std::int64_t>(&id); given != nullptr && model_.contains(*given)) {
      try {
        table_->Insert(Values(id, row));
        FAIL() << "a second row with the key " << *given;
      } catch (const Error& error) {
        ASSERT_EQ(error.kind(), ErrorKind::kDuplicate);
      }
      return;
    }
    const InsertResult result = table_->Insert(Values(id, row));
    ASSERT_TRUE(result.auto_number);
    if (const auto* given = std::get_if<std::int64_t>(&id)) {
      ASSERT_EQ(*result.auto_number, *given);
    } else {
      ASSERT_EQ(*result.auto_number, highest_ + 1);
    }
    highest_ = std::max<std::int64_t>(highest_, *result.auto_number);
    model_[*result.auto_number] = std::make_shared<ModelRow>(row);
  }

  void Update() {
    const std::int64_t id = RandomId();
    const std::optional<RowId> row_id = FindRow(id);
    ASSERT_EQ(row_id.has_value(), model_.contains(id));
    if (!row_id) return;
    ModelRow row = *model_[id];
    const ModelRow other = RandomRow();
    std::vector<Assignment> changes;
    const auto change = [&](std::size_t column, Value& present, const Value& next) {
      if (!OneIn(2)) return;
      present = next;
      changes.push_back({column, next});
    };
    change(1, row.group, other.group);
    change(2, row.name, other.name);
    change(4, row.notes, other.notes);
    change(5, row.picture, other.picture);
    table_->Update(*row_id, changes);
    model_[id] = std::make_shared<ModelRow>(row);
  }

  void Delete() {
    const std::int64_t id = RandomId();
    const std::optional<RowId> row_id = FindRow(id);
    ASSERT_EQ(row_id.has_value(), model_.contains(id));
    if (!row_id) return;
    table_->Delete(*row_id);
    model_.erase(id);
  }

  // --- transactions ---

  struct Saved {
    Model model;
    std::int64_t highest = 0;
  };
  Saved Save() const { return {model_, highest_}; }
  void Return(const Saved& saved) {
    model_ = saved.model;
    highest_ = saved.highest;
  }

  void Begin() {
    database_->Begin();
    committed_ = Save();
    savepoints_.clear();
  }

  void EndTransaction() {
    if (OneIn(3)) {
      database_->Rollback();
      Return(committed_);
    } else {
      database_->Commit();
    }
    if (OneIn(4)) {
      database_.reset();
      table_.reset();
      database_ = Database::Open(layer_, kDatabase, OpenMode::kReadWrite, Options());
      table_ = database_->OpenTable("Contacts");
    }
    Begin();
  }

  void ChangeSavepoints() {
    if (savepoints_.size() < 3 && OneIn(2)) {
      ASSERT_EQ(database_->BeginSavepoint(), savepoints_.size());
      savepoints_.push_back(Save());
      return;
    }
    if (savepoints_.empty()) return;
    const std::size_t depth = Below(savepoints_.size());
    if (OneIn(2)) {
      database_->ReleaseSavepoint(depth);
      savepoints_.resize(depth);
    } else {
      database_->RollbackToSavepoint(depth);
      Return(savepoints_[depth]);
      savepoints_.resize(depth + 1);
    }
  }

  // --- comparing ---

  void ExpectRow(const RowView& row, std::int64_t id) {
    const auto found = model_.find(id);
    ASSERT_NE(found, model_.end()) << id;
    const ModelRow& expected = *found->second;
    EXPECT_TRUE(row.Get(1) == expected.group && row.Get(2) == expected.name && row.Get(4) == expected.notes &&
                row.Get(5) == expected.picture && row.Get(3) == Value(expected.active))
        << "row " << id;
  }

  void CompareAll() {
    ExpectClean(*database_);
    EXPECT_EQ(table_->RowCount(), static_cast<std::int64_t>(model_.size()));
    std::size_t scanned = 0;
    for (Cursor cursor = table_->Scan(); cursor.Next(); ++scanned) {
      ExpectRow(cursor.row(), *cursor.row().Integer(0));
    }
    EXPECT_EQ(scanned, model_.size());
    auto next = model_.begin();
    for (IndexCursor cursor = table_->Search(*table_->SearchablePrimaryKey(), {}); cursor.Next(); ++next) {
      ASSERT_NE(next, model_.end());
      EXPECT_EQ(cursor.key(), next->first);
      EXPECT_EQ(cursor.row().Integer(0), next->first);
    }
    EXPECT_EQ(next, model_.end());
    CompareGroups();
  }

  void CompareGroups() {
    for (std::int64_t first = -4; first <= 4; first += 2) {
      std::size_t expected = 0;
      for (const auto& [id, row] : model_) {
        const auto* group = std::get_if<std::int64_t>(&row->group);
        expected += group != nullptr && *group >= first && *group <= first + 1 ? 1U : 0U;
      }
      std::size_t found = 0;
      IndexCursor cursor = table_->Search(*table_->FindIndex("GroupIndex"), {first, first + 1});
      for (; cursor.Next(); ++found) EXPECT_EQ(cursor.row().Integer(1), cursor.key());
      EXPECT_EQ(found, expected) << "group " << first;
    }
  }

  void Step(bool growing) {
    const std::size_t choice = Below(100);
    if (choice < 2) return EndTransaction();
    if (choice < 8) return ChangeSavepoints();
    if (choice < 30) return Update();
    const bool insert = Below(10) < (growing ? 8U : 2U);
    if (insert && model_.size() < kMostRows) return Insert();
    Delete();
  }

  MemoryFileLayer layer_;
  std::unique_ptr<Database> database_;
  std::shared_ptr<Table> table_;
  std::mt19937 random_{20240229};
  Model model_;
  std::int64_t highest_ = 0;
  Saved committed_;
  std::vector<Saved> savepoints_;
};

TEST_F(ModelTest, DoesWhatAMapDoes) {
  const char* wanted = std::getenv("JET_TEST_OPERATIONS");
  const std::size_t operations = wanted == nullptr ? kUsualOperations : std::strtoull(wanted, nullptr, 10);
  ASSERT_GT(operations, 0U);
  for (std::size_t i = 1; i <= operations && !HasFailure(); ++i) {
    Step(i / kPhase % 2 == 0);
    if (i % kOperationsBetweenChecks == 0 || i == operations) CompareAll();
    if (HasFailure()) std::printf("after %zu operations\n", i);
  }
  EXPECT_EQ(database_->storage().space.OwnPages().size(), 1U);
}

}  // namespace
}  // namespace kestro::test
