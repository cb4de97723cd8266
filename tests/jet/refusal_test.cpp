#include <array>
#include <functional>

#include <gtest/gtest.h>

#include "jet/bytes.h"
#include "jet/index_key.h"
#include "jet/jet_bench.h"
#include "jet/text_key.h"

// Files and tables that must not be opened, or not be changed, and the reasons given.

namespace kestro::test {
namespace {

using namespace jet;

using Bytes = MemoryFileLayer::Bytes;

Bytes SampleFile() {
  MemoryFileLayer layer;
  const auto database = Database::Create(layer, kDatabase, FixedTime());
  Transaction transaction(*database);
  const auto table = database->CreateTable(ContactsDesign());
  table->Insert(std::vector<Value>{Null(), std::int64_t{1}, "Anna", true, "note", Null(), 1.0});
  transaction.Commit();
  return *layer.Content(kDatabase);
}

// Where the definition of the user's table is, and its parts.
PageNumber DefinitionPage(const Bytes& file) {
  MemoryFileLayer layer;
  layer.Put(kDatabase, file);
  return Database::Open(layer, kDatabase, OpenMode::kReadOnly)->OpenTable("Contacts")->definition().page;
}

using Change = std::function<void(Bytes&)>;

struct Refusal {
  const char* what;
  Change change;
  ErrorKind kind;
  const char* word;
};

void FlipByte(Bytes& file, std::size_t at) { file[at] ^= 0x01; }

TEST(Refusal, OfFiles) {
  const Refusal refusals[] = {
      {"no such file at all", [](Bytes& file) { file.assign(4096, 'x'); }, ErrorKind::kNotADatabase,
       "format"},
      {"an empty file", [](Bytes& file) { file.clear(); }, ErrorKind::kNotADatabase, "empty"},
      {"older format", [](Bytes& file) { file[0x14] = 0; }, ErrorKind::kNotADatabase, "Jet 3"},
      {"newer format", [](Bytes& file) { file[0x14] = 2; }, ErrorKind::kNotADatabase, "newer"},
      {"encrypted", [](Bytes& file) { FlipByte(file, 0x3E); }, ErrorKind::kNotADatabase, "encrypted"},
      {"password", [](Bytes& file) { FlipByte(file, 0x50); }, ErrorKind::kNotADatabase, "password"},
      {"half a page", [](Bytes& file) { file.resize(file.size() - 100); }, ErrorKind::kNotADatabase, "size"},
      {"cut off", [](Bytes& file) { file.resize(2 * kPageSize); }, ErrorKind::kDamaged, "behind the end"},
      {"catalogue gone", [](Bytes& file) { file[2 * kPageSize] = 1; }, ErrorKind::kDamaged, "definition"},
  };
  for (const Refusal& refusal : refusals) {
    MemoryFileLayer layer;
    Bytes file = SampleFile();
    refusal.change(file);
    layer.Put(kDatabase, file);
    try {
      (void)Database::Open(layer, kDatabase, OpenMode::kReadWrite);
      ADD_FAILURE() << refusal.what << " was opened";
    } catch (const Error& error) {
      EXPECT_EQ(error.kind(), refusal.kind) << refusal.what << ": " << error.what();
      EXPECT_NE(std::string(error.what()).find(refusal.word), std::string::npos) << error.what();
    }
    EXPECT_EQ(*layer.Content(kDatabase), file) << refusal.what << " was changed";
  }
}

// Records of the definition: columns of 25 bytes behind the header and the counters of two indexes.
constexpr std::size_t kColumnsAt = 63 + 2 * 12;
constexpr std::size_t kColumnBytes = 25;

std::size_t FindBytes(const Bytes& file, std::size_t from, std::initializer_list<int> wanted) {
  for (std::size_t at = from; at + wanted.size() < file.size(); ++at) {
    if (std::equal(wanted.begin(), wanted.end(), file.begin() + static_cast<std::ptrdiff_t>(at))) return at;
  }
  ADD_FAILURE() << "the bytes to be changed were not found";
  return from;
}

TEST(Refusal, OfChangesToTables) {
  struct ReadOnlyCase {
    const char* what;
    std::function<void(Bytes&, std::size_t)> change;  // second: where the definition starts
    const char* word;
  };
  const auto column = [](std::size_t index, std::size_t at) {
    return kColumnsAt + kColumnBytes * index + at;
  };
  // The first record of an index: its mark 1923, then the number of its first column.
  const auto index = [](const Bytes& file, std::size_t page) {
    return FindBytes(file, page, {0x83, 0x07, 0, 0});
  };
  const auto logical = [](const Bytes& file, std::size_t page) {
    return FindBytes(file, page, {0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 4, 4}) - 13;
  };
  const ReadOnlyCase cases[] = {
      {"unknown type", [&](Bytes& f, std::size_t p) { f[p + column(2, 0)] = 18; }, "unknown type"},
      {"decimal", [&](Bytes& f, std::size_t p) { f[p + column(2, 0)] = 16; }, "decimal"},
      {"automatic GUID", [&](Bytes& f, std::size_t p) { f[p + column(2, 15)] |= 0x40; }, "not supported"},
      {"several values", [&](Bytes& f, std::size_t p) { f[p + column(2, 17)] = 1; }, "not supported"},
      {"text index",
       [&](Bytes& f, std::size_t p) {
         f[p + column(2, 11)] = 0x1D;
         f[index(f, p) + 4] = 2;
       },
       "sort order"},
      {"index over yes/no", [&](Bytes& f, std::size_t p) { f[index(f, p) + 4] = 3; }, "sort order"},
      {"index flags", [&](Bytes& f, std::size_t p) { f[index(f, p) + 46] |= 0x40; }, "index has properties"},
      {"relationship", [&](Bytes& f, std::size_t p) { f[logical(f, p) + 23] = 2; }, "relationship"},
      {"other table", [&](Bytes& f, std::size_t p) { f[logical(f, p) + 17] = 9; }, "relationship"},
      {"replication",
       [&](Bytes& f, std::size_t p) {
         const std::size_t name = FindBytes(f, p, {'N', 0, 'a', 0, 'm', 0, 'e', 0});
         f[name] = 's';
         f[name + 2] = '_';
       },
       "replication"},
  };
  for (const ReadOnlyCase& one : cases) {
    Bytes file = SampleFile();
    one.change(file, DefinitionPage(file) * kPageSize);
    MemoryFileLayer layer;
    layer.Put(kDatabase, file);
    const auto database = Database::Open(layer, kDatabase, OpenMode::kReadWrite);
    const auto table = database->OpenTable("Contacts");
    EXPECT_NE(table->ReadOnlyReason().find(one.word), std::string::npos)
        << one.what << ": " << table->ReadOnlyReason();
    Transaction transaction(*database);
    try {
      table->Insert(std::vector<Value>(7));
      ADD_FAILURE() << one.what << ": a row was inserted";
    } catch (const Error& error) {
      EXPECT_EQ(error.kind(), ErrorKind::kReadOnly) << one.what << ": " << error.what();
    }
    // Rows can be read all the same.
    Cursor cursor = table->Scan();
    ASSERT_TRUE(cursor.Next()) << one.what;
    EXPECT_EQ(cursor.row().Integer(0), 1) << one.what;
  }
}

TEST(Refusal, OfFilesInUse) {
  MemoryFileLayer layer;
  layer.Put(kDatabase, SampleFile());
  {
    const auto owner = Database::Open(layer, kDatabase, OpenMode::kReadWrite);
    EXPECT_THROW((void)Database::Open(layer, kDatabase, OpenMode::kReadOnly), Error);
  }
  // A leftover lock file of another program goes; one in use makes the database read only.
  layer.Put("folder/contacts.ldb", Bytes(64));
  EXPECT_EQ(Database::Open(layer, kDatabase, OpenMode::kReadWrite)->ReadOnlyReason(), "");
  EXPECT_FALSE(layer.Exists("folder/contacts.ldb"));
  layer.Put("folder/contacts.ldb", Bytes(64));
  layer.MakeUnremovable("folder/contacts.ldb");
  const auto shared = Database::Open(layer, kDatabase, OpenMode::kReadWrite);
  EXPECT_NE(shared->ReadOnlyReason().find("contacts.ldb"), std::string::npos);
  EXPECT_THROW(shared->Begin(), Error);

  MemoryFileLayer disc;
  disc.Put(kDatabase, SampleFile());
  disc.MakeReadOnly(kDatabase);
  const auto database = Database::Open(disc, kDatabase, OpenMode::kReadWrite);
  EXPECT_NE(database->ReadOnlyReason().find("may not be written"), std::string::npos);
  EXPECT_EQ(database->OpenTable("Contacts")->ReadOnlyReason(), database->ReadOnlyReason());
}

TEST(Refusal, OfValuesAndDesigns) {
  MemoryFileLayer layer;
  const auto database = Database::Create(layer, kDatabase, FixedTime());
  Transaction transaction(*database);
  TableDesign design = ContactsDesign();
  design.columns[2].required = true;
  design.columns[4].allow_empty_text = false;
  const auto table = database->CreateTable(design);
  const auto row = [](Value name, Value notes = Null(), Value group = Null(), Value id = Null()) {
    return std::vector<Value>{std::move(id),    std::move(group), std::move(name), false,
                              std::move(notes), Null(),           Null()};
  };
  struct Case {
    std::vector<Value> values;
    ErrorKind kind;
  };
  table->Insert(row("first", Null(), Null(), std::int64_t{5}));
  const Case cases[] = {
      {row(Null()), ErrorKind::kRequired},
      {row("x", ""), ErrorKind::kValue},
      {row(std::string(256, 'x')), ErrorKind::kValue},
      {row("\xC3"), ErrorKind::kValue},
      {row("\xEF\xBB\xBFx"), ErrorKind::kValue},
      {row("x", Null(), std::int64_t{1} << 31), ErrorKind::kValue},
      {row("x", Null(), "text"), ErrorKind::kValue},
      {row(std::int64_t{1}), ErrorKind::kValue},
      {row("x", Null(), Null(), std::int64_t{5}), ErrorKind::kDuplicate},
      {std::vector<Value>(3), ErrorKind::kMisuse},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    try {
      table->Insert(cases[i].values);
      ADD_FAILURE() << "case " << i;
    } catch (const Error& error) {
      EXPECT_EQ(error.kind(), cases[i].kind) << i << ": " << error.what();
    }
  }
  EXPECT_EQ(table->RowCount(), 1);  // and the transaction goes on
  for (const char* name : {"", " x", "a.b", "\xE4\xB8\xAD", "a\x01"}) {
    EXPECT_THROW(database->CreateTable({name, {{.name = "Id"}}, {}}), Error) << name;
  }
  EXPECT_THROW(database->CreateTable(ContactsDesign("CONTACTS")), Error);
  transaction.Commit();
  ExpectClean(*database);
}

// Known keys of the text order.
TEST(TextKey, OrdersTexts) {
  struct Case {
    const char* text;
    Bytes key;
  };
  const Case cases[] = {
      {"", {0x01, 0x00}},
      {"aB ", {0x4A, 0x4C, 0x01, 0x00}},
      {"\xC3\x84o", {0x4A, 0x64, 0x01, 0x13, 0x00}},
      {"a\xC3\xA9", {0x4A, 0x51, 0x01, 0x02, 0x0E, 0x00}},
      {"a-9", {0x4A, 0x48, 0x01, 0x01, 0x01, 0x01, 0x80, 0x0B, 0x06, 0x82, 0x00}},
      {"_\xC2\xA7", {0x2B, 0x03, 0x34, 0xAA, 0x01, 0x00}},
      {"\xC3\x9F", {0x6B, 0x6B, 0x01, 0x00}},
  };
  for (const Case& one : cases) {
    IndexKey key;
    ASSERT_TRUE(AppendTextKey(one.text, key)) << one.text;
    EXPECT_EQ(Bytes(key.bytes().begin(), key.bytes().end()), one.key) << one.text;
  }
  IndexKey key;
  EXPECT_FALSE(AppendTextKey("\xC4\x8D", key));
}

}  // namespace
}  // namespace kestro::test
