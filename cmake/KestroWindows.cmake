# What only a build for Windows needs: SQLite from its sources, resources of the programs, the stand-in for the
# telephony library.

enable_language(C RC)

set(KESTRO_SQLITE_DIR "${CMAKE_SOURCE_DIR}/build/sqlite"
    CACHE PATH "Folder with sqlite3.c and sqlite3.h; filled by tools/fetch_sqlite.sh when it is empty")
# A build for Windows cannot run its own cti-template.
set(KESTRO_DATABASE_TEMPLATE "" CACHE FILEPATH "DBTemplate.tpl of a build for this machine")

# Functions of Windows 7 and later; texts of the system are UTF-16; its headers keep out of the way.
add_compile_definitions(_WIN32_WINNT=0x0601 UNICODE _UNICODE STRICT NOMINMAX)

# --- SQLite --------------------------------------------------------------------------------------

if(NOT EXISTS "${KESTRO_SQLITE_DIR}/sqlite3.c")
  execute_process(COMMAND "${CMAKE_SOURCE_DIR}/tools/fetch_sqlite.sh" "${KESTRO_SQLITE_DIR}" COMMAND_ERROR_IS_FATAL ANY)
endif()
add_library(kestro_sqlite_engine STATIC "${KESTRO_SQLITE_DIR}/sqlite3.c")
target_include_directories(kestro_sqlite_engine SYSTEM PUBLIC "${KESTRO_SQLITE_DIR}")
target_compile_definitions(kestro_sqlite_engine PRIVATE SQLITE_OMIT_LOAD_EXTENSION SQLITE_DEFAULT_MEMSTATUS=1)
add_library(SQLite::SQLite3 ALIAS kestro_sqlite_engine)

# --- resources -----------------------------------------------------------------------------------

# Adds version, manifest, icons, the text catalogue and the tool-bar pictures to a program.
function(kestro_windows_resources target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "DESCRIPTION" "")
  set(KESTRO_FILE_DESCRIPTION "${arg_DESCRIPTION}")
  set(KESTRO_FILE_NAME "${target}.exe")
  set(pictures)
  set(KESTRO_TOOL_PICTURES "")
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/resources/tools/*.svg")
  foreach(source IN LISTS sources)
    get_filename_component(name "${source}" NAME_WE)
    foreach(size 24 48 96) # plain screens, those of twice the density, and large texts on those
      set(picture "${KESTRO_GENERATED_DIR}/tools/${name}-${size}.png")
      add_custom_command(
        OUTPUT "${picture}"
        COMMAND "${CMAKE_COMMAND}" -E make_directory "${KESTRO_GENERATED_DIR}/tools"
        COMMAND "${KESTRO_RSVG_CONVERT}" -w ${size} -h ${size} "${source}" -o "${picture}"
        DEPENDS "${source}"
        COMMENT "Drawing ${name}-${size}.png"
        VERBATIM)
      list(APPEND pictures "${picture}")
      string(TOUPPER "TOOL_${name}_${size}" id)
      string(APPEND KESTRO_TOOL_PICTURES "${id} RCDATA \"${picture}\"\n")
    endforeach()
  endforeach()
  configure_file("${CMAKE_SOURCE_DIR}/resources/windows/program.rc.in" "${KESTRO_GENERATED_DIR}/${target}.rc" @ONLY)
  target_sources(${target} PRIVATE "${KESTRO_GENERATED_DIR}/${target}.rc")
  set_source_files_properties(
    "${KESTRO_GENERATED_DIR}/${target}.rc"
    PROPERTIES OBJECT_DEPENDS
               "${pictures};${texts_base}.rc;${CMAKE_SOURCE_DIR}/resources/windows/program.manifest;${icon_files}")
  add_dependencies(${target} icons)
endfunction()
