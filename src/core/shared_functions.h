#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/procedure_frame.h"
#include "ports/database.h"
#include "ports/file_system.h"

namespace kestro::core {

/// Small helpers that several subjects use.
class SharedFunctions {
 public:
  SharedFunctions(LogModule& log, ports::FileSystem& files)
      : procedure_(log, "KESTROCTI.SharedFunctions", Spelling::kFullStop), files_(files) {}

  /// `value` as it stands, or `fallback` when it is missing or has nothing but spaces.
  [[nodiscard]] std::string Nz(const std::optional<std::string>& value, std::string_view fallback) const;
  /// The program's folder with "\" separators and one behind it; empty when unknown.
  [[nodiscard]] std::string GetCurrentApplicationPath() const;
  /// Sorts by `column`; a recordset that is sorted by just that column is turned to descending.
  void SetSortStringForDataSource(ports::Recordset& recordset, std::string_view column) const;

 private:
  ProcedureFrame procedure_;
  ports::FileSystem& files_;
};

}  // namespace kestro::core
