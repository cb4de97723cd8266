# Sources made at build time: version, text catalogue, Unicode case tables.

configure_file("${CMAKE_SOURCE_DIR}/cmake/version.h.in" "${KESTRO_GENERATED_DIR}/version.h" @ONLY)

set(texts_file "${CMAKE_SOURCE_DIR}/resources/texts.en.txt")
set(texts_base "${KESTRO_GENERATED_DIR}/text_catalogue_table")
add_custom_command(
  OUTPUT "${texts_base}.cpp" "${texts_base}.h" "${texts_base}.rc"
  COMMAND "${CMAKE_COMMAND}" "-DINPUT=${texts_file}" "-DOUTPUT=${texts_base}" -P
          "${CMAKE_SOURCE_DIR}/cmake/generate_text_catalogue.cmake"
  DEPENDS "${texts_file}" "${CMAKE_SOURCE_DIR}/cmake/generate_text_catalogue.cmake"
  COMMENT "Generating the text catalogue"
  VERBATIM)

# Not searched below a cross compiler's root: the data is read on the building machine.
find_file(KESTRO_CASE_FOLDING_FILE CaseFolding.txt PATHS /usr/share/unicode NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH
          DOC "CaseFolding.txt of the Unicode Character Database")
find_file(KESTRO_UNICODE_DATA_FILE UnicodeData.txt PATHS /usr/share/unicode NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH
          DOC "UnicodeData.txt of the Unicode Character Database")
if(NOT KESTRO_CASE_FOLDING_FILE OR NOT KESTRO_UNICODE_DATA_FILE)
  message(FATAL_ERROR "The Unicode Character Database is missing: install the package unicode-data, or set "
                      "KESTRO_CASE_FOLDING_FILE and KESTRO_UNICODE_DATA_FILE")
endif()
set(case_base "${KESTRO_GENERATED_DIR}/case_tables")
add_custom_command(
  OUTPUT "${case_base}.cpp" "${case_base}.h"
  COMMAND
    "${CMAKE_COMMAND}" "-DCASE_FOLDING=${KESTRO_CASE_FOLDING_FILE}" "-DUNICODE_DATA=${KESTRO_UNICODE_DATA_FILE}"
    "-DOUTPUT=${case_base}" -P "${CMAKE_SOURCE_DIR}/cmake/generate_case_tables.cmake"
  DEPENDS "${KESTRO_CASE_FOLDING_FILE}" "${KESTRO_UNICODE_DATA_FILE}"
          "${CMAKE_SOURCE_DIR}/cmake/generate_case_tables.cmake"
  COMMENT "Generating the Unicode case tables"
  VERBATIM)

set(KESTRO_GENERATED_SOURCES "${texts_base}.h" "${case_base}.cpp" "${case_base}.h")
if(NOT WIN32)
  # There the program reads the texts from its own resources.
  list(APPEND KESTRO_GENERATED_SOURCES "${texts_base}.cpp")
endif()
