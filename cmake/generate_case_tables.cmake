# Turns the Unicode case data into C++ tables:
#   cmake -DCASE_FOLDING=CaseFolding.txt -DUNICODE_DATA=UnicodeData.txt -DOUTPUT=<path without extension>
#         -P generate_case_tables.cmake
# Only one-to-one mappings are taken (statuses C and S, simple upper case): a text keeps its length.

# Appends "{0xFROM, 0xTO}," to the variable `rows` and checks that the code points ascend.
macro(append_pair from to)
  math(EXPR from_value "0x${from}")
  if(NOT from_value GREATER last)
    message(FATAL_ERROR "Code point ${from} does not follow in ascending order")
  endif()
  set(last "${from_value}")
  string(APPEND rows "    {0x${from}, 0x${to}},\n")
endmacro()

set(hex "[0-9A-F]+")

set(rows "")
set(last -1)
file(STRINGS "${CASE_FOLDING}" lines REGEX "^${hex}; [CS]; ${hex};" ENCODING UTF-8)
foreach(line IN LISTS lines)
  if(NOT line MATCHES "^(${hex}); [CS]; (${hex});")
    message(FATAL_ERROR "${CASE_FOLDING}: cannot read: ${line}")
  endif()
  append_pair("${CMAKE_MATCH_1}" "${CMAKE_MATCH_2}")
endforeach()
set(fold_rows "${rows}")

# Field 12 (counted from 0) is the simple upper-case mapping.
set(rows "")
set(last -1)
set(eleven_fields "[^;]*;[^;]*;[^;]*;[^;]*;[^;]*;[^;]*;[^;]*;[^;]*;[^;]*;[^;]*;[^;]*;")
file(STRINGS "${UNICODE_DATA}" lines REGEX "^${hex};${eleven_fields}${hex};" ENCODING UTF-8)
foreach(line IN LISTS lines)
  if(NOT line MATCHES "^(${hex});${eleven_fields}(${hex});")
    message(FATAL_ERROR "${UNICODE_DATA}: cannot read: ${line}")
  endif()
  append_pair("${CMAKE_MATCH_1}" "${CMAKE_MATCH_2}")
endforeach()
set(upper_rows "${rows}")

if(fold_rows STREQUAL "" OR upper_rows STREQUAL "")
  message(FATAL_ERROR "No case mappings in ${CASE_FOLDING} or ${UNICODE_DATA}")
endif()

file(WRITE "${OUTPUT}.h" [[
// Generated from the Unicode Character Database.
#pragma once

#include <span>

namespace kestro::base {

struct CasePair {
  char32_t from;
  char32_t to;
};

// Simple case folding, ascending by `from`; a code point that is not listed folds to itself.
std::span<const CasePair> CaseFoldPairs();

// Simple upper-case mapping, ascending by `from`; a code point that is not listed maps to itself.
std::span<const CasePair> UpperCasePairs();

}  // namespace kestro::base
]])
file(WRITE "${OUTPUT}.cpp" "// Generated from the Unicode Character Database.
#include \"generated/case_tables.h\"

namespace kestro::base {
namespace {

constexpr CasePair kFoldPairs[] = {
${fold_rows}};

constexpr CasePair kUpperPairs[] = {
${upper_rows}};

}  // namespace

std::span<const CasePair> CaseFoldPairs() { return kFoldPairs; }

std::span<const CasePair> UpperCasePairs() { return kUpperPairs; }

}  // namespace kestro::base
")
