#include <algorithm>
#include <functional>

#include <gtest/gtest.h>

#include "jet/jet_bench.h"
#include "jet/properties.h"
#include "jet/row_encoder.h"
#include "jet/row_layout.h"

// The bytes of rows and of the blocks with properties, as others may leave them.

namespace kestro::test {
namespace {

using namespace jet;

using Bytes = std::vector<std::uint8_t>;

struct SampleRow {
  std::unique_ptr<Database> database;
  std::shared_ptr<Table> table;
  Bytes bytes;
};

SampleRow MakeSample(MemoryFileLayer& layer) {
  SampleRow sample;
  sample.database = Database::Create(layer, kDatabase, FixedTime());
  Transaction transaction(*sample.database);
  sample.table = sample.database->CreateTable(ContactsDesign());
  transaction.Commit();
  RowEncoder encoder(sample.table->definition());
  encoder.Clear();
  const std::vector<Value> values{std::int64_t{7}, std::int64_t{-2}, "Anna", true, "note", Blob{1, 2}, 1.5};
  for (std::size_t i = 0; i < values.size(); ++i) encoder.Set(i, values[i]);
  const ByteSpan row = encoder.Build();
  sample.bytes.assign(row.begin(), row.end());
  return sample;
}

// Reads every column; how many of them were damaged, or all when it is no row at all.
std::size_t DamagedColumns(const Table& table, const Bytes& row) {
  std::size_t damaged = 0;
  try {
    const RowLayout layout(row, true);
    for (const Column& column : table.columns()) {
      try {
        const std::optional<ByteSpan> value = layout.Value(column);
        if (!value || value->empty()) continue;
        EXPECT_TRUE(value->data() >= row.data() && value->data() + value->size() <= row.data() + row.size());
      } catch (const Error&) {
        ++damaged;
      }
    }
  } catch (const Error&) {
    return table.columns().size();
  }
  return damaged;
}

TEST(RowLayout, NeverLeavesTheRow) {
  MemoryFileLayer layer;
  const SampleRow sample = MakeSample(layer);
  EXPECT_EQ(DamagedColumns(*sample.table, sample.bytes), 0U);
  std::size_t found = 0;
  for (std::size_t at = 0; at < sample.bytes.size(); ++at) {
    for (int byte = 0; byte < 256; ++byte) {
      Bytes row = sample.bytes;
      row[at] = static_cast<std::uint8_t>(byte);
      found += DamagedColumns(*sample.table, row) > 0 ? 1U : 0U;
    }
  }
  EXPECT_GT(found, 1000U);
  for (std::size_t size = 0; size < sample.bytes.size(); ++size) {
    (void)DamagedColumns(
        *sample.table, Bytes(sample.bytes.begin(), sample.bytes.begin() + static_cast<std::ptrdiff_t>(size)));
  }
}

TEST(RowLayout, FindsWhatDoesNotFit) {
  MemoryFileLayer layer;
  const SampleRow sample = MakeSample(layer);
  const std::size_t end = sample.bytes.size();  // ..., end of values, three starts, 3, one byte of bits
  struct Case {
    const char* what;
    std::size_t at;
    int value;
    std::size_t damaged;
  };
  const Case cases[] = {
      {"more columns than bits have room for", 1, 1, 7},
      {"more starts than the row is long", end - 3, 100, 6},
      {"the first value begins behind the end", end - 5, 250, 4},
      {"the first value begins in the header", end - 5, 1, 4},
      {"values end inside their own table", end - 11, 250, 6},
      {"a value ends before it begins", end - 7, 3, 1},
  };
  for (const Case& one : cases) {
    Bytes row = sample.bytes;
    row[one.at] = static_cast<std::uint8_t>(one.value);
    EXPECT_EQ(DamagedColumns(*sample.table, row), one.damaged) << one.what;
  }
  Bytes older(sample.bytes);
  older[0] = 4;  // a row from before the last three columns
  const RowLayout layout(older, true);
  EXPECT_TRUE(layout.Value(sample.table->columns()[2]).has_value());
  EXPECT_FALSE(layout.Value(sample.table->columns()[4]).has_value());
}

// --- properties ---

std::vector<Column> TwoColumns() {
  std::vector<Column> columns(2);
  columns[0].name = "Name";
  columns[0].type = ColumnType::kText;
  columns[1].name = "Age";
  columns[1].type = ColumnType::kInt32;
  return columns;
}

TEST(Properties, AreReadAsWritten) {
  for (int flags = 0; flags < 8; ++flags) {
    std::vector<Column> columns = TwoColumns();
    columns[0].required = (flags & 1) != 0;
    columns[0].allow_empty_text = (flags & 2) != 0;
    columns[1].required = (flags & 4) != 0;
    std::vector<Column> read = TwoColumns();
    EXPECT_EQ(ApplyProperties(MakeProperties(columns), read), "");
    EXPECT_EQ(read[0].required, columns[0].required);
    EXPECT_EQ(read[0].allow_empty_text, columns[0].allow_empty_text);
    EXPECT_EQ(read[1].required, columns[1].required);
  }
}

TEST(Properties, DamageIsFoundOrHarmless) {
  std::vector<Column> columns = TwoColumns();
  columns[0].required = true;
  const Blob good = MakeProperties(columns);
  std::size_t refused = 0;
  const auto read = [&](const Blob& block) {
    std::vector<Column> target = TwoColumns();
    try {
      return ApplyProperties(block, target);
    } catch (const Error& error) {
      EXPECT_EQ(error.kind(), ErrorKind::kDamaged);
      ++refused;
      return std::string("damaged");
    }
  };
  for (std::size_t at = 0; at < good.size(); ++at) {
    for (int byte = 0; byte < 256; ++byte) {
      Blob block = good;
      block[at] = static_cast<std::uint8_t>(byte);
      const std::string reason = read(block);
      if (at >= 4 || block == good) continue;
      EXPECT_NE(reason.find("unknown form"), std::string::npos);
    }
  }
  EXPECT_GT(refused, 500U);
  for (std::size_t size = 5; size < good.size(); ++size)
    (void)read(Blob(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size)));
  // A rule on a column, or on the table: rows must not be changed.
  Blob rule = good;
  const std::string wide("R\0e\0q\0u\0i\0r\0e\0d\0", 16);
  const auto place = std::search(rule.begin(), rule.end(), wide.begin(), wide.end());
  ASSERT_NE(place, rule.end());
  Blob longer(rule.begin(), place - 2);
  const std::string name("V\0a\0l\0i\0d\0a\0t\0i\0o\0n\0R\0u\0l\0e\0", 28);
  longer.insert(longer.end(), {28, 0});
  longer.insert(longer.end(), name.begin(), name.end());
  longer.insert(longer.end(), place + 16, rule.end());
  longer[4] = static_cast<std::uint8_t>(longer[4] + 12);  // the length of the chunk with the names
  EXPECT_NE(read(longer).find("validation rules"), std::string::npos);
}

}  // namespace
}  // namespace kestro::test
