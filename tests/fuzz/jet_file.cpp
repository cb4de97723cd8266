#include <memory>
#include <string>
#include <vector>

#include "fuzz/property.h"
#include "jet/checker.h"
#include "jet/cramped_map.h"
#include "jet/database.h"
#include "jet/error.h"
#include "jet/journal.h"
#include "jet/memory_file_layer.h"
#include "jet/table.h"

// A damaged database. The input is a list of changes (page, offset, byte: five bytes each) to a small valid
// file that is built here: so that the changes hit what matters instead of making the file unreadable. The
// first byte chooses the file, and whether the input also serves as a journal, or as the whole file.

namespace kestro::jet {
namespace {

using test::MemoryFileLayer;
using Bytes = std::vector<std::uint8_t>;

constexpr const char* kName = "f.mdb";
constexpr std::size_t kMostFilePages = 400;  // what the target itself may make the file grow to

TableDesign Design(const char* name) {
  return {
      name,
      {{.name = "Id", .auto_number = true},
       {.name = "Number"},
       {.name = "Name", .type = ColumnType::kText},
       {.name = "Flag", .type = ColumnType::kBool},
       {.name = "Notes", .type = ColumnType::kMemo},
       {.name = "Data", .type = ColumnType::kOle}},
      {{.name = "Key", .columns = {"Id"}, .primary = true}, {.name = "Other", .columns = {"Number", "Id"}}}};
}

std::vector<Value> Row(std::int64_t number, std::size_t length) {
  return {Null(), number, std::string(length % 50, 'n'), true, std::string(length, 'm'), Blob(length / 2)};
}

// A file with every kind of page: `rows` decides how high the indexes are.
Bytes MakeFile(int rows, bool cramped = false) {
  MemoryFileLayer layer;
  {
    const auto database = Database::Create(layer, kName);
    if (cramped) test::CrampMapOfFreePages(*database);
    Transaction transaction(*database);
    const auto table = database->CreateTable(Design("T"));
    std::vector<RowId> ids;
    ids.reserve(static_cast<std::size_t>(rows));
    for (int i = 0; i < rows; ++i) {
      ids.push_back(table->Insert(Row(i % 7, i % 40 == 0 ? 5000 : i % 10 == 0 ? 500 : 20)).id);
    }
    for (std::size_t i = 0; i < ids.size(); i += 9) {
      table->Update(ids[i], std::vector<Assignment>{{2, std::string(240, 'w')}});
    }
    for (std::size_t i = 4; i < ids.size(); i += 11) table->Delete(ids[i]);
    transaction.Commit();
  }
  return *layer.Content(kName);
}

const Bytes& SomeFile(std::size_t choice) {
  static const std::vector<Bytes> files{MakeFile(0), MakeFile(30), MakeFile(450)};
  static const Bytes other_map = MakeFile(160, true);
  return choice >= 0xC0 ? other_map : files[choice % files.size()];
}

void ApplyChanges(const Bytes& data, Bytes& file) {
  for (std::size_t at = 0; at + 5 <= data.size(); at += 5) {
    const std::size_t pages = file.size() / kPageSize;
    const std::size_t page = data[at] % pages;
    const std::size_t offset = (data[at + 1] + 256U * data[at + 2]) % kPageSize;
    std::uint8_t& byte = file[page * kPageSize + offset];
    byte = static_cast<std::uint8_t>(data[at + 4] % 2 == 0 ? data[at + 3] : byte ^ data[at + 3]);
  }
}

void ReadAll(const Table& table) {
  Value value;
  for (Cursor cursor = table.Scan(); cursor.Next();) {
    for (std::size_t i = 0; i < table.columns().size(); ++i) cursor.row().Get(i, value);
  }
  for (std::size_t i = 0; i < table.indexes().size(); ++i) {
    if (!table.indexes()[i].searchable) continue;
    for (IndexCursor cursor = table.Search(i, {}); cursor.Next();) (void)cursor.row().Integer(0);
  }
}

void ChangeAll(Database& database, Table& table) {
  database.Begin();
  const std::size_t savepoint = database.BeginSavepoint();
  for (int i = 0; i < 3; ++i) table.Insert(Row(3, 6000));
  database.RollbackToSavepoint(savepoint);
  table.Insert(Row(1, 100));
  std::vector<RowId> ids;
  for (Cursor cursor = table.Scan(); cursor.Next() && ids.size() < 3;) ids.push_back(cursor.row().id());
  for (const RowId id : ids)
    table.Update(id, std::vector<Assignment>{{1, std::int64_t{9}}, {4, std::string(4100, 'z')}});
  for (const RowId id : ids) table.Delete(id);
  database.CreateTable(Design("U"));
  database.DropTable("U");
  database.Commit();
}

// Nothing but Error may come out of any of this.
template <typename Step>
void Try(Step step) {
  try {
    step();
  } catch (const Error&) {
  }
}

void CheckFile(std::string_view input) {
  const std::uint8_t choice = fuzz::TakeByte(input);
  const Bytes bytes(input.begin(), input.end());
  Bytes file = SomeFile(choice);
  if (choice % 32 == 31) {
    file = bytes;
    file.resize((bytes.size() + kPageSize) / kPageSize * kPageSize);
  } else {
    ApplyChanges(bytes, file);
  }
  MemoryFileLayer layer;
  layer.SetMostBytes(kMostFilePages * kPageSize);
  layer.Put(kName, file);
  if (choice % 8 == 7) layer.Put(JournalPath(kName), bytes);
  Try([&] {
    const auto database = Database::Open(layer, kName, OpenMode::kReadWrite, {.cache_pages = 16, .now = {}});
    (void)CheckDatabase(*database);
    for (const std::string& name : database->Tables()) {
      Try([&] {
        const auto table = database->OpenTable(name);
        Try([&] { ReadAll(*table); });
        Try([&] { ChangeAll(*database, *table); });
        Try([&] { ReadAll(*table); });
      });
      if (database->InTransaction()) Try([&] { database->Rollback(); });
      Try([&] {
        database->Begin();
        database->DropTable(name);
        database->Commit();
      });
      if (database->InTransaction()) Try([&] { database->Rollback(); });
    }
  });
}

}  // namespace
}  // namespace kestro::jet

void kestro::fuzz::Check(std::string_view input) { jet::CheckFile(input); }
