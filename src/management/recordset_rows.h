#pragma once

#include <memory>
#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "forms/grid.h"
#include "ports/database.h"

namespace kestro::management {

/// A recordset as the rows of a grid: column n of the grid is the field named
/// n-th. Moves the recordset's current row.
class RecordsetRows final : public forms::GridRows {
 public:
  /// Takes the fields from the grid's columns; the recordset must outlive the object.
  RecordsetRows(ports::Recordset& recordset, const std::vector<forms::Grid::Column>& columns)
      : recordset_(recordset) {
    for (const auto& column : columns) fields_.push_back(recordset.FieldIndex(column.data_field));
  }

  [[nodiscard]] std::int64_t RowCount() const override { return recordset_.RecordCount(); }
  [[nodiscard]] std::string Cell(std::int64_t row, int column) const override {
    try {
      recordset_.MoveTo(row);
      return std::string(recordset_.Text(fields_.at(static_cast<std::size_t>(column))));
    } catch (const base::RuntimeError&) {
      return {};  // gone meanwhile, or the database is: the next search tells
    }
  }

 private:
  ports::Recordset& recordset_;
  std::vector<int> fields_;
};

}  // namespace kestro::management
