#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "jet/table.h"

namespace kestro::adapters {

/// The keys of all rows of a table in the order of one text column.
using JetOrder = std::vector<std::int32_t>;

struct JetOrderKey {
  std::string table;
  std::size_t column = 0;
  bool descending = false;

  friend bool operator==(const JetOrderKey&, const JetOrderKey&) = default;
};

/// The order asked for last, kept as long as no row of the file changes. The file knows no order of texts
/// but its own, so a list by name means to read all names and to sort them; showing it once more must not.
class JetOrders {
 public:
  /// Rows by TextOrder of the column, nulls first (descending: last), equal ones by key. The table has a
  /// searchable primary key. `changes`: what JetSession counts. 4 bytes a row stay in memory; while sorting
  /// it is 32 and the text.
  [[nodiscard]] std::shared_ptr<const JetOrder> Get(const jet::Table& table, std::size_t column,
                                                    bool descending, std::uint64_t changes);

 private:
  JetOrderKey key_;
  std::uint64_t changes_ = 0;
  std::shared_ptr<const JetOrder> order_;
};

}  // namespace kestro::adapters
