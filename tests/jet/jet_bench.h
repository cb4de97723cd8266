#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "jet/checker.h"
#include "jet/cramped_map.h"
#include "jet/database.h"
#include "jet/memory_file_layer.h"
#include "jet/table_design.h"

namespace kestro::test {

inline constexpr const char* kDatabase = "folder/contacts.mdb";

/// A database in memory and what the tests do with it over and over.
inline jet::DatabaseOptions FixedTime() {
  jet::DatabaseOptions options;
  options.now = [] { return 45000.5; };
  return options;
}

/// Numbered rows with a second index that is not unique, and every kind of long value.
inline jet::TableDesign ContactsDesign(const std::string& name = "Contacts") {
  using jet::ColumnType;
  jet::TableDesign design;
  design.name = name;
  design.columns = {
      {.name = "Id", .auto_number = true},           {.name = "GroupId"},
      {.name = "Name", .type = ColumnType::kText},   {.name = "Active", .type = ColumnType::kBool},
      {.name = "Notes", .type = ColumnType::kMemo},  {.name = "Picture", .type = ColumnType::kOle},
      {.name = "Changed", .type = ColumnType::kDate}};
  design.indexes = {{.name = "PrimaryKey", .columns = {"Id"}, .primary = true},
                    {.name = "GroupIndex", .columns = {"GroupId"}}};
  return design;
}

inline void ExpectClean(jet::Database& database) {
  for (const std::string& finding : jet::CheckDatabase(database).findings) ADD_FAILURE() << finding;
}

inline std::string ValueText(const jet::Value& value) {
  if (const auto* integer = std::get_if<std::int64_t>(&value)) return std::to_string(*integer);
  if (const auto* number = std::get_if<double>(&value)) return std::to_string(*number);
  if (const auto* words = std::get_if<std::string>(&value)) return *words;
  if (const auto* bytes = std::get_if<jet::Blob>(&value)) return {bytes->begin(), bytes->end()};
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? "yes" : "no";
  return {};
}

/// Everything that rows say, as text; the order is that of storage.
inline std::string Dump(jet::Database& database) {
  std::string text;
  for (const std::string& name : database.Tables()) {
    const std::shared_ptr<jet::Table> table = database.OpenTable(name);
    text += name + " " + std::to_string(table->RowCount()) + "\n";
    for (jet::Cursor cursor = table->Scan(); cursor.Next();) {
      for (std::size_t i = 0; i < table->columns().size(); ++i) {
        const jet::Value value = cursor.row().Get(i);
        text += std::to_string(value.index()) + ":" + ValueText(value) + "|";
      }
      text += "\n";
    }
  }
  return text;
}

}  // namespace kestro::test
