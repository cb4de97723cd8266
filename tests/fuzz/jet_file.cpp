#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "jet/checker.h"
#include "jet/data_page.h"
#include "jet/database.h"
#include "jet/error.h"
#include "jet/journal.h"
#include "jet/table.h"

// A damaged database. The input is a list of changes (page, offset, byte: five bytes each) to a small valid
// file that is built here: so that the changes hit what matters instead of making the file unreadable. The
// first byte chooses the file, and whether the input also serves as a journal, or as the whole file.

namespace {

using namespace kestro::jet;
using Bytes = std::vector<std::uint8_t>;

constexpr const char* kName = "f.mdb";
constexpr std::size_t kMostPages = 400;  // what the target itself may make the file grow to

// Files in memory; only what the engine needs here.
class Layer : public FileLayer {
 public:
  class MemoryFile : public File {
   public:
    explicit MemoryFile(Bytes& bytes) : bytes_(bytes) {}
    std::size_t ReadAt(std::uint64_t offset, std::span<std::uint8_t> bytes) override {
      std::size_t count = 0;
      for (; count < bytes.size() && offset + count < bytes_.size(); ++count)
        bytes[count] = bytes_[offset + count];
      return count;
    }
    void WriteAt(std::uint64_t offset, std::span<const std::uint8_t> bytes) override {
      if (offset + bytes.size() > kMostPages * kPageSize)
        throw Error(ErrorKind::kFileSystem, "the disk is full");
      if (bytes_.size() < offset + bytes.size()) bytes_.resize(offset + bytes.size());
      for (std::size_t i = 0; i < bytes.size(); ++i) bytes_[offset + i] = bytes[i];
    }
    std::uint64_t Size() override { return bytes_.size(); }
    void Truncate(std::uint64_t size) override { bytes_.resize(size); }
    void Sync() override {}

   private:
    Bytes& bytes_;
  };

  std::unique_ptr<File> Open(const std::string& path, FileMode mode) override {
    if (mode == FileMode::kCreate) Named(path).clear();
    return std::make_unique<MemoryFile>(Named(path));
  }
  bool Exists(const std::string& path) override {
    return path == kName || (path == JournalPath(kName) && has_journal);
  }
  void Remove(const std::string& path) override {
    if (path == JournalPath(kName)) has_journal = false;
  }
  void SyncFolder(const std::string&) override {}

  Bytes database;
  Bytes journal;
  bool has_journal = false;

 private:
  Bytes& Named(const std::string& path) {
    if (path == kName) return database;
    has_journal = true;
    return journal;
  }
};

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

// Fills the page of the map of free pages, so that the map needs pages of its own.
void CrampMap(Database& database) {
  database.Begin();
  {
    const PageEdit page = database.storage().pager.Edit(1);
    DataPageEdit data(page.edit());
    (void)data.Resize(0, 9);
    const MutableBytes other = data.Resize(1, data.view().row(1).size() + data.view().ComputeFree());
    for (std::uint8_t& byte : other) byte = 0;
    const MutableBytes row = page.edit().subspan(data.view().slot(0).start, 9);
    for (std::uint8_t& byte : row) byte = 0;
    Store16(row, 7, 0xFFFF);  // pages 0 to 15 are used
  }
  database.Commit();
}

// A file with every kind of page: `rows` decides how high the indexes are.
Bytes MakeFile(int rows, bool cramped = false) {
  Layer layer;
  {
    const auto database = Database::Create(layer, kName);
    if (cramped) CrampMap(*database);
    Transaction transaction(*database);
    const auto table = database->CreateTable(Design("T"));
    std::vector<RowId> ids;
    for (int i = 0; i < rows; ++i) {
      ids.push_back(table->Insert(Row(i % 7, i % 40 == 0 ? 5000 : i % 10 == 0 ? 500 : 20)).id);
    }
    for (std::size_t i = 0; i < ids.size(); i += 9) {
      table->Update(ids[i], std::vector<Assignment>{{2, std::string(240, 'w')}});
    }
    for (std::size_t i = 4; i < ids.size(); i += 11) table->Delete(ids[i]);
    transaction.Commit();
  }
  return layer.database;
}

const Bytes& SomeFile(std::size_t choice) {
  static const std::vector<Bytes> files{MakeFile(0), MakeFile(30), MakeFile(450)};
  static const Bytes other_map = MakeFile(160, true);
  return choice >= 0xC0 ? other_map : files[choice % files.size()];
}

void ApplyChanges(const std::uint8_t* data, std::size_t size, Bytes& file) {
  for (std::size_t at = 0; at + 5 <= size; at += 5) {
    const std::size_t pages = file.size() / kPageSize;
    const std::size_t page = data[at] % pages;
    const std::size_t offset = (data[at + 1] | (data[at + 2] << 8)) % kPageSize;
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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  Layer layer;
  layer.database = SomeFile(data[0]);
  if (data[0] % 32 == 31) {
    layer.database.assign(data + 1, data + size);
    layer.database.resize((size + kPageSize - 1) / kPageSize * kPageSize);
  } else {
    ApplyChanges(data + 1, size - 1, layer.database);
  }
  if (data[0] % 8 == 7) {
    layer.journal.assign(data + 1, data + size);
    layer.has_journal = true;
  }
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
  return 0;
}
