# Turns the text catalogue into a C++ table and into a string table for the resources of a Windows program:
#   cmake -DINPUT=texts.en.txt -DOUTPUT=<path without extension> -P generate_text_catalogue.cmake
# Input: UTF-8, one entry a line, number, TAB, text; numbers ascend. Anything else stops the build.

# CMake lists give ';', '[', ']' and '\' a meaning; while a line is in a list, control characters that
# no text holds stand for them.
string(ASCII 1 semicolon)
string(ASCII 2 open_bracket)
string(ASCII 3 close_bracket)
string(ASCII 4 backslash)
string(ASCII 9 tab)
set(semicolon_text ";")
set(open_bracket_text "[")
set(close_bracket_text "]")

file(READ "${INPUT}" content)
if(content MATCHES "[${semicolon}${open_bracket}${close_bracket}${backslash}]")
  message(FATAL_ERROR "${INPUT}: control characters are not allowed")
endif()
if(NOT content MATCHES "\n$")
  message(FATAL_ERROR "${INPUT}: the last line has no line end")
endif()
string(REPLACE "\\" "${backslash}" content "${content}")
string(REPLACE ";" "${semicolon}" content "${content}")
string(REPLACE "[" "${open_bracket}" content "${content}")
string(REPLACE "]" "${close_bracket}" content "${content}")
string(REGEX REPLACE "\n$" "" content "${content}")
string(REPLACE "\n" ";" lines "${content}")

set(rows "")
set(resource_rows "")
set(last -1)
set(line_number 0)
foreach(line IN LISTS lines)
  math(EXPR line_number "${line_number} + 1")
  if(NOT line MATCHES "^([1-9][0-9]*)${tab}(.+)$")
    message(FATAL_ERROR "${INPUT}:${line_number}: not a number, a TAB and a text")
  endif()
  set(number "${CMAKE_MATCH_1}")
  set(text "${CMAKE_MATCH_2}")
  if(NOT number GREATER last)
    message(FATAL_ERROR "${INPUT}:${line_number}: number ${number} does not follow ${last} in ascending order")
  endif()
  set(last "${number}")
  string(REPLACE "${backslash}" "\\\\" text "${text}")
  string(REPLACE "\"" "\"\"" resource_text "${text}")
  string(REPLACE "\"" "\\\"" text "${text}")
  string(REPLACE "${tab}" "\\t" text "${text}")
  string(REPLACE "${semicolon}" ";" text "${text}")
  string(REPLACE "${open_bracket}" "[" text "${text}")
  string(REPLACE "${close_bracket}" "]" text "${text}")
  string(APPEND rows "    {${number}, \"${text}\"},\n")
  foreach(mark semicolon open_bracket close_bracket)
    string(REPLACE "${${mark}}" "${${mark}_text}" resource_text "${resource_text}")
  endforeach()
  string(REPLACE "${tab}" "\\t" resource_text "${resource_text}")
  string(APPEND resource_rows "  ${number} \"${resource_text}\"\n")
endforeach()
if(rows STREQUAL "")
  message(FATAL_ERROR "${INPUT}: no entries")
endif()

file(WRITE "${OUTPUT}.h" [[
// Generated from resources/texts.en.txt.
#pragma once

#include <span>
#include <string_view>

namespace kestro::core {

struct CatalogueText {
  int number;
  std::string_view text;  // UTF-8
};

// Every text of the catalogue, ascending by number.
std::span<const CatalogueText> CatalogueTexts();

}  // namespace kestro::core
]])
file(WRITE "${OUTPUT}.cpp" "// Generated from resources/texts.en.txt.
#include \"generated/text_catalogue_table.h\"

namespace kestro::core {
namespace {

constexpr CatalogueText kTexts[] = {
${rows}};

}  // namespace

std::span<const CatalogueText> CatalogueTexts() { return kTexts; }

}  // namespace kestro::core
")
file(WRITE "${OUTPUT}.rc" "// Generated from resources/texts.en.txt.
STRINGTABLE
BEGIN
${resource_rows}END
")
