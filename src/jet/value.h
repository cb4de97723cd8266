#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace kestro::jet {

using Null = std::monostate;
using Blob = std::vector<std::uint8_t>;

/// The value of one column of one row. Which alternative a column type delivers and takes:
///
///   kBool                         bool (never null: an unset value is false)
///   kByte, kInt16, kInt32         std::int64_t, within the type's range
///   kMoney                        std::int64_t, ten-thousandths of the unit
///   kFloat, kDouble               double
///   kDate                         double: days since 1899-12-30, the fraction is the time of day
///   kText, kMemo                  std::string, UTF-8
///   kGuid                         std::string, "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}"
///   kNumeric                      std::string, decimal; read only
///   kBinary, kOle                 Blob
///   unknown types                 Blob with the stored bytes; read only
///
/// Writing is strict about the alternative with two exceptions: a std::int64_t is taken for kFloat, kDouble
/// and kDate, and a std::int64_t (0 or not) for kBool.
using Value = std::variant<Null, bool, std::int64_t, double, std::string, Blob>;

}  // namespace kestro::jet
