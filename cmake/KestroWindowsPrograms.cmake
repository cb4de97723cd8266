# The programs for Windows.

# CTI.exe, the program itself; it also plays scenarios.
kestro_collect(cti_sources src/programs/cti-windows)
add_executable(CTI WIN32 ${cti_sources})
target_link_libraries(CTI PRIVATE kestro_win32 kestro_headless kestro_sqlite kestro_jetfile kestro kestro_warnings)
set_target_properties(CTI PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${KESTRO_PROGRAM_DIR}")
kestro_windows_resources(CTI DESCRIPTION "Desktop computer telephony")
add_dependencies(CTI program_folder)

# The stand-in for the telephony library. Not in the program folder: there it would take the real one's place.
kestro_collect(stand_in_sources src/programs/tapi32-stand-in)
add_library(tapi32 SHARED ${stand_in_sources})
target_link_libraries(tapi32 PRIVATE kestro_win32 kestro kestro_warnings)
set_target_properties(tapi32 PROPERTIES PREFIX "" RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/stand-in")
# 32-bit programs look for the functions under their plain names.
target_link_options(tapi32 PRIVATE -Wl,--kill-at)

# Operates the stand-in from a console.
kestro_program(cti-exchange REQUIRES kestro_win32)
set_target_properties(cti-exchange PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/stand-in")

# --- tests, run under Wine by tests/windows/run.sh -------------------------------------------------

option(KESTRO_WINDOWS_TESTS "Build the tests that run under Wine" OFF)
if(KESTRO_WINDOWS_TESTS AND NOT EXISTS /usr/src/googletest/CMakeLists.txt)
  # The programs can be built without it; "./dev test" installs it first.
  message(STATUS "GoogleTest's sources were not found: the tests for Windows are left out")
elseif(KESTRO_WINDOWS_TESTS)
  # Debian's package googletest has the sources; there is no library for Windows.
  set(INSTALL_GTEST OFF)
  add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
  kestro_collect(windows_test_sources tests/windows)
  list(FILTER windows_test_sources EXCLUDE REGEX "/tests/windows/dial_com/|/tests/windows/bench/")
  # These are the same for every front end with windows on a screen.
  foreach(shared both_front_ends lists_on_both windows_on_screen)
    list(APPEND windows_test_sources "${CMAKE_SOURCE_DIR}/tests/qt/${shared}_test.cpp")
  endforeach()
  add_executable(windows-tests ${windows_test_sources})
  target_include_directories(windows-tests PRIVATE "${CMAKE_SOURCE_DIR}/tests"
                                                   "${CMAKE_SOURCE_DIR}/tests/windows/front_end")
  target_link_libraries(windows-tests PRIVATE kestro_win32 kestro_headless kestro_sqlite kestro_jetfile kestro kestro_warnings
                                              kestro_test_code GTest::gmock GTest::gtest_main)
  # The texts and the manifest are the program's own.
  target_sources(windows-tests PRIVATE "${CMAKE_SOURCE_DIR}/src/programs/cti-windows/text_catalogue.cpp")
  kestro_windows_resources(windows-tests DESCRIPTION "Tests of KESTRO CTI")
  add_library(dial_com SHARED "${CMAKE_SOURCE_DIR}/tests/windows/dial_com/dial_com.cpp")
  target_link_libraries(dial_com PRIVATE kestro_win32 kestro_warnings)
  target_link_options(dial_com PRIVATE -Wl,--kill-at)
  set_target_properties(windows-tests dial_com PROPERTIES PREFIX "" RUNTIME_OUTPUT_DIRECTORY
                                                                    "${CMAKE_BINARY_DIR}/windows-tests")
endif()

# What bench/windows_startup.sh measures CTI.exe against.
if(KESTRO_BENCHMARKS)
  add_executable(minimal_windows_tray WIN32 "${CMAKE_SOURCE_DIR}/bench/programs/minimal_windows_tray.cpp")
  target_link_libraries(minimal_windows_tray PRIVATE kestro_warnings)
  set_target_properties(minimal_windows_tray PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bench")
endif()
