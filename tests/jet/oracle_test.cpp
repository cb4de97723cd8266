#include <cstdio>
#include <map>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "adapters/jetfile/system_file_layer.h"
#include "jet/jet_bench.h"
#include "unit/support/temporary_folder.h"

// What another reader of such files, the commands of the package mdbtools, finds in ours.

namespace kestro::test {
namespace {

using namespace jet;

constexpr char kFieldEnd = '\x1E';
constexpr char kRowEnd = '\x1D';

struct CommandOutput {
  int status = -1;
  std::string text;
};

CommandOutput RunCommand(const std::string& command) {
  CommandOutput output;
  std::FILE* pipe = ::popen((command + " 2>/dev/null").c_str(), "r");
  if (pipe == nullptr) return output;
  char buffer[4096];
  for (std::size_t count = 0; (count = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
    output.text.append(buffer, count);
  }
  output.status = ::pclose(pipe);
  return output;
}

std::vector<std::string> Split(const std::string& text, char end) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, end);) parts.push_back(part);
  return parts;
}

class OracleTest : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* command : {"mdb-tables", "mdb-export", "mdb-count"}) {
      if (RunCommand(std::string("command -v ") + command).status != 0) {
        GTEST_SKIP() << "mdbtools is not installed: " << command << " was not found";
      }
    }
    database_ = Database::Create(layer_, path_, FixedTime());
  }
  void TearDown() override { database_.reset(); }

  /// Bytes are hexadecimal.
  CommandOutput Export(const std::string& table) {
    return RunCommand(std::string("mdb-export -H -Q -b hex -0 NULL -d '") + kFieldEnd + "' -R '" + kRowEnd +
                      "' '" + path_ + "' '" + table + "'");
  }

  adapters::SystemFileLayer layer_;
  test_support::TemporaryFolder folder_;
  std::string path_ = folder_.File("oracle.mdb").string();
  std::unique_ptr<Database> database_;
};

std::string Hex(const Blob& bytes) {
  std::string text;
  char digits[3];
  for (const std::uint8_t byte : bytes) {
    std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned>(byte));
    text += digits;
  }
  return text;
}

// That reader takes an empty text for none.
std::string Expected(const Value& value) {
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? "1" : "0";
  if (const auto* integer = std::get_if<std::int64_t>(&value)) return std::to_string(*integer);
  if (const auto* text = std::get_if<std::string>(&value)) return text->empty() ? "NULL" : *text;
  if (const auto* bytes = std::get_if<Blob>(&value)) return Hex(*bytes);
  return "NULL";
}

std::string SomeText(std::mt19937& random, std::size_t most) {
  const char* const letters[] = {"a", "Q", " ", "'", "\xC3\xA9", "\xC4\x8D", "\xE2\x82\xAC", "\xE4\xB8\xAD"};
  // Characters outside the first plane are left out: that reader shows question marks for them.
  const std::size_t kinds = random() % 2 == 0 ? 5 : 8;
  std::string text;
  for (std::size_t length = random() % (most + 1); length > 0; --length) text += letters[random() % kinds];
  return text;
}

// Without dates: their text depends on the reader's settings. A key of ten columns makes an index three
// levels high.
TableDesign OracleDesign(const std::string& name) {
  TableDesign design = ContactsDesign(name);
  design.columns.back() = {.name = "Small", .type = ColumnType::kInt16};
  IndexDesign wide{.name = "Wide", .columns = {}};
  for (int i = 0; i < 10; ++i) {
    design.columns.push_back({.name = "N" + std::to_string(i)});
    wide.columns.push_back(design.columns.back().name);
  }
  design.indexes.push_back(wide);
  return design;
}

TEST_F(OracleTest, AnotherReaderFindsTheSame) {
  std::mt19937 random(7);
  std::map<std::string, std::vector<Value>> rows;  // by number
  CrampMapOfFreePages(*database_);
  database_->Begin();
  const auto table = database_->CreateTable(OracleDesign("Contacts"));
  database_->CreateTable(OracleDesign("Leere Tabelle"));
  constexpr int kRows = 20'000;
  constexpr int kVaried = 3000;  // with long texts, too, and changed afterwards
  const std::size_t lengths[] = {0, 10, 40, 300, 3000, 15'000};
  std::vector<RowId> ids;
  for (int i = 0; i < kRows; ++i) {
    std::vector<Value> row{std::int64_t{i + 1},
                           std::int64_t{i % 17},
                           SomeText(random, 60),
                           i % 3 == 0,
                           SomeText(random, lengths[random() % (i < kVaried ? 6 : 3)]),
                           Blob(random() % 200, 0xA5),
                           std::int64_t{i % 1000 - 500}};
    if (i % 5 == 0) row[2] = Null();
    if (i % 7 == 0) row[4] = "";
    if (i % 8 == 0) row[5] = Null();
    row.resize(OracleDesign("").columns.size(), std::int64_t{i} * 7919 % kRows);
    ids.push_back(table->Insert(row).id);
    rows[std::to_string(i + 1)] = row;
  }
  for (int i = 0; i < kVaried; i += 3) {
    const std::string number = std::to_string(i + 1);
    std::vector<Value>& row = rows[number];
    row[2] = std::string(200, 'm');  // most of these rows have to move
    row[4] = SomeText(random, 2000);
    table->Update(ids[static_cast<std::size_t>(i)], std::vector<Assignment>{{2, row[2]}, {4, row[4]}});
    if (i % 4 != 0) continue;
    table->Delete(ids[static_cast<std::size_t>(i)]);
    rows.erase(number);
  }
  database_->Commit();
  ExpectClean(*database_);
  const auto level = [&](std::size_t index) {
    const PageRef root = database_->storage().pager.Read(table->definition().real_indexes[index].root);
    return IndexPage(root.bytes()).level();
  };
  EXPECT_EQ(level(0), 1);
  EXPECT_EQ(level(2), 2);
  EXPECT_EQ(database_->storage().space.OwnPages().size(), 1U);
  database_.reset();

  const CommandOutput tables = RunCommand("mdb-tables -1 '" + path_ + "'");
  EXPECT_EQ(tables.text, "Contacts\nLeere Tabelle\n");
  EXPECT_EQ(RunCommand("mdb-count '" + path_ + "' Contacts").text, std::to_string(rows.size()) + "\n");
  EXPECT_EQ(RunCommand("mdb-count '" + path_ + "' 'Leere Tabelle'").text, "0\n");
  std::size_t compared = 0;
  for (const std::string& line : Split(Export("Contacts").text, kRowEnd)) {
    const std::vector<std::string> fields = Split(line + kFieldEnd, kFieldEnd);
    ASSERT_EQ(fields.size(), 17U) << line;
    const auto found = rows.find(fields[0]);
    ASSERT_NE(found, rows.end()) << fields[0];
    for (std::size_t i = 0; i < fields.size(); ++i) {
      EXPECT_EQ(fields[i], Expected(found->second[i])) << "row " << fields[0] << ", column " << i;
    }
    ++compared;
    if (HasFailure()) break;
  }
  EXPECT_EQ(compared, rows.size());
}

}  // namespace
}  // namespace kestro::test
