#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "ports/database.h"
#include "support/error_number.h"

namespace kestro::test_support {

using test::ErrorNumberOf;

/// What every recordset of rows "a", "b" and "c" in the column `index` refuses, changing nothing; closes it.
/// The sort order "`name` DESC" is one it knows.
inline void ExpectContract(ports::Recordset& rows, int index, const std::string& name) {
  const std::string descending = name + " DESC";
  rows.SetSort(descending);
  EXPECT_EQ(rows.Position(), 0);
  for (const std::int64_t row : {2, 0, 0, 1, 2, 1}) {
    rows.MoveTo(row);
    EXPECT_EQ(rows.Position(), row);
    EXPECT_EQ(rows.Text(index), std::string(1, static_cast<char>('c' - row)));
  }
  for (const std::int64_t row : {std::int64_t{-1}, std::int64_t{3}, INT64_MIN, INT64_MAX}) {
    EXPECT_EQ(ErrorNumberOf([&] { rows.MoveTo(row); }), base::kSubscriptOutOfRange) << row;
    EXPECT_EQ(rows.Text(index), "b");
  }
  const std::string sorts[] = {
      "Nothing", descending + " DESC", "DESC", name + " ASC, " + name, name + "\" DESC; --", "1"};
  for (const std::string& sort : sorts) {
    EXPECT_EQ(ErrorNumberOf([&] { rows.SetSort(sort); }), base::kDatabaseError) << sort;
    EXPECT_EQ(rows.Sort(), descending);
    EXPECT_EQ(rows.Text(index), "b");
  }
  const int none = rows.FieldCount();
  for (const std::function<void()>& action : {std::function<void()>([&] { return rows.Text(none); }),
                                              {[&] { return rows.Field(-1); }},
                                              {[&] { return rows.FieldName(-1); }},
                                              {[&] { return rows.FieldIndex("Nothing"); }}}) {
    EXPECT_EQ(ErrorNumberOf(action), base::kSubscriptOutOfRange);
  }
  rows.MoveNext();
  EXPECT_FALSE(rows.AtEnd());
  rows.MoveNext();
  EXPECT_TRUE(rows.AtEnd());
  EXPECT_EQ(rows.Position(), rows.RecordCount());
  EXPECT_EQ(ErrorNumberOf([&] { rows.MoveNext(); }), base::kDatabaseError);
  EXPECT_EQ(ErrorNumberOf([&] { return rows.Text(index); }), base::kDatabaseError);
  rows.MoveTo(1);
  EXPECT_EQ(rows.Text(index), "b");
  rows.Close();
  for (const std::function<void()>& action : std::vector<std::function<void()>>{
           [&] { rows.Close(); }, [&] { return rows.AtEnd(); }, [&] { rows.MoveTo(0); },
           [&] { return rows.RecordCount(); }, [&] { return rows.Text(index); }, [&] { rows.SetSort(name); },
           [&] { return rows.FieldIndex(name); }}) {
    EXPECT_EQ(ErrorNumberOf(action), base::kDatabaseError);
  }
}

}  // namespace kestro::test_support
