# Unit tests, Qt tests, scenarios, fuzz programs and benchmarks. A kind whose folder is empty is left out.

enable_testing()
include(GoogleTest)

# The libraries that every test program may use.
set(test_libraries kestro_headless kestro_sqlite kestro_jetfile kestro kestro_warnings)
if(TARGET kestro_posix)
  list(PREPEND test_libraries kestro_posix)
endif()

# What test programs have in common: the folders they read, and code shared between them.
function(kestro_test_program name)
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}/tests")
  target_compile_definitions(${name} PRIVATE "KESTRO_TEST_DATA_DIR=\"${CMAKE_SOURCE_DIR}/tests/data\""
                                             "KESTRO_PROGRAM_DIR=\"${KESTRO_PROGRAM_DIR}\"")
  add_dependencies(${name} program_folder)
endfunction()

if(KESTRO_TESTS)
  kestro_collect(support_sources tests/support)
  kestro_collect(unit_sources tests/unit)
  kestro_collect(qt_test_sources tests/qt)
  kestro_collect(jet_test_sources tests/jet)

  if(unit_sources OR qt_test_sources OR jet_test_sources)
    find_package(GTest QUIET)
    if(NOT GTest_FOUND)
      # The programs can be built without it; "./dev test" installs it first.
      message(WARNING "GoogleTest was not found: the unit tests are left out")
    endif()
  endif()

  # The whole application on the player's machine and the headless front end, for tests that drive it.
  if(TARGET cti-scenario AND TARGET kestro_posix)
    add_library(kestro_whole STATIC "${CMAKE_SOURCE_DIR}/src/programs/cti-scenario/posix_machine.cpp")
    target_include_directories(kestro_whole PUBLIC "${CMAKE_SOURCE_DIR}/tests")
    target_link_libraries(kestro_whole PUBLIC kestro_headless kestro_posix kestro_sqlite kestro_jetfile kestro
                                       PRIVATE kestro_warnings kestro_test_code)
  endif()

  if(unit_sources AND GTest_FOUND)
    add_executable(kestro-unit-tests ${unit_sources} ${support_sources})
    target_link_libraries(kestro-unit-tests PRIVATE ${test_libraries} kestro_test_code GTest::gmock GTest::gtest_main)
    kestro_test_program(kestro-unit-tests)
    if(TARGET kestro_whole)
      target_link_libraries(kestro-unit-tests PRIVATE kestro_whole)
    endif()
    if(TARGET cti-scenario)
      add_dependencies(kestro-unit-tests cti-scenario) # the player's tests run it
    endif()
    gtest_discover_tests(kestro-unit-tests DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120 LABELS unit)
  endif()

  if(qt_test_sources AND GTest_FOUND AND TARGET kestro_qt)
    add_executable(kestro-qt-tests ${qt_test_sources} ${support_sources})
    target_link_libraries(kestro-qt-tests PRIVATE kestro_qt ${test_libraries} kestro_test_code GTest::gtest)
    kestro_test_program(kestro-qt-tests)
    target_include_directories(kestro-qt-tests PRIVATE "${CMAKE_SOURCE_DIR}/tests/qt") # its screen_front_end.h
    # Listing and running both go through this: no screen is needed, the user's own settings stay untouched.
    set_target_properties(kestro-qt-tests PROPERTIES AUTOMOC ON CROSSCOMPILING_EMULATOR
                                                                "${CMAKE_SOURCE_DIR}/tests/isolated.sh")
    gtest_discover_tests(kestro-qt-tests DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120 LABELS qt)
  endif()

  # The engine for database files is tested by itself. JET_TEST_OPERATIONS sets the length of its random test.
  if(jet_test_sources AND GTest_FOUND)
    add_executable(kestro-jet-tests ${jet_test_sources})
    target_link_libraries(kestro-jet-tests PRIVATE kestro_jetfile kestro_jet kestro_warnings kestro_test_code
                                                   GTest::gmock GTest::gtest_main)
    target_include_directories(kestro-jet-tests PRIVATE "${CMAKE_SOURCE_DIR}/tests")
    gtest_discover_tests(kestro-jet-tests DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 600 LABELS jet)
  endif()

  # The program is no unit test: the script starts it and kills it.
  if(TARGET kestro_posix)
    add_executable(save-settings-forever "${CMAKE_SOURCE_DIR}/tests/programs/save_settings_forever.cpp")
    target_link_libraries(save-settings-forever PRIVATE kestro_posix kestro kestro_warnings)
    add_test(NAME kill-while-saving COMMAND "${CMAKE_SOURCE_DIR}/tests/kill_while_saving.sh"
                                            "$<TARGET_FILE:save-settings-forever>")
    set_tests_properties(kill-while-saving PROPERTIES LABELS slow TIMEOUT 300)
  endif()

  if(TARGET kestro_posix)
    add_executable(import-contacts "${CMAKE_SOURCE_DIR}/tests/programs/import_contacts.cpp")
    target_link_libraries(import-contacts PRIVATE ${test_libraries})
    target_include_directories(import-contacts PRIVATE "${CMAKE_SOURCE_DIR}/tests")
    # A few kills only; the script makes a hundred by itself.
    add_test(NAME kill-while-importing COMMAND "${CMAKE_SOURCE_DIR}/tests/kill_while_importing.sh"
                                               "$<TARGET_FILE:import-contacts>" 5 20000)
    set_tests_properties(kill-while-importing PROPERTIES LABELS slow TIMEOUT 300)
  endif()

  # Programs that drive it for long, or let the outside world fail.
  if(TARGET kestro_whole)
    foreach(name soak faults)
      kestro_collect(sources "tests/${name}")
      if(sources)
        add_executable(cti-${name} ${sources})
        target_link_libraries(cti-${name} PRIVATE kestro_whole kestro_warnings kestro_test_code)
        kestro_test_program(cti-${name})
      endif()
    endforeach()
  endif()

  # The programs as they are installed, without a screen.
  if(TARGET kestro-cti AND TARGET cti-exchange)
    add_test(NAME real-programs COMMAND "${CMAKE_SOURCE_DIR}/tests/isolated.sh"
                                        "${CMAKE_SOURCE_DIR}/tests/real_programs.sh" "${KESTRO_PROGRAM_DIR}")
    set_tests_properties(real-programs PROPERTIES LABELS programs TIMEOUT 300)
  endif()

  # One test a folder: tests/scenarios/reception becomes scenario.reception.
  if(TARGET cti-scenario)
    file(GLOB_RECURSE scenario_files CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/tests/scenarios/*.scenario")
    set(scenario_folders)
    foreach(file IN LISTS scenario_files)
      get_filename_component(folder "${file}" DIRECTORY)
      list(APPEND scenario_folders "${folder}")
    endforeach()
    list(REMOVE_DUPLICATES scenario_folders)
    set(front_ends headless)
    if(TARGET kestro_qt)
      list(APPEND front_ends qt)
    endif()
    foreach(folder IN LISTS scenario_folders)
      file(RELATIVE_PATH name "${CMAKE_SOURCE_DIR}/tests" "${folder}")
      string(REGEX REPLACE "^scenarios" "scenario" name "${name}")
      string(REPLACE "/" "." name "${name}")
      add_test(NAME "${name}" COMMAND "${CMAKE_SOURCE_DIR}/tests/run_scenarios.sh" --flat --front-ends
                                      "${front_ends}" "$<TARGET_FILE:cti-scenario>" "${folder}")
      # The runner uses every processor by itself.
      set_tests_properties("${name}" PROPERTIES LABELS scenario RUN_SERIAL ON TIMEOUT 900)
    endforeach()
  endif()
endif()

# Fuzz programs: clang brings its own engine; otherwise our driver runs seeded mutations of the corpus.
if(KESTRO_FUZZERS)
  file(GLOB fuzz_sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/tests/fuzz/*.cpp")
  set(fuzz_programs)
  if(fuzz_sources AND NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    add_library(kestro_fuzz_driver STATIC "${CMAKE_SOURCE_DIR}/tests/fuzz/driver/standalone_driver.cpp")
    target_link_libraries(kestro_fuzz_driver PRIVATE kestro_warnings)
  endif()
  foreach(source IN LISTS fuzz_sources)
    get_filename_component(name "${source}" NAME_WE)
    add_executable(fuzz_${name} "${source}" "${CMAKE_SOURCE_DIR}/tests/fuzz/driver/entry.cpp")
    target_link_libraries(fuzz_${name} PRIVATE kestro_jet ${test_libraries} kestro_test_code)
    kestro_test_program(fuzz_${name})
    set_target_properties(fuzz_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/fuzz")
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
      target_compile_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
      target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
    else()
      target_link_libraries(fuzz_${name} PRIVATE kestro_fuzz_driver)
    endif()
  endforeach()
endif()

# Benchmarks: one program a file.
if(KESTRO_BENCHMARKS AND NOT WIN32)
  file(GLOB bench_sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/bench/*.cpp")
  if(bench_sources)
    find_package(benchmark QUIET)
    if(NOT benchmark_FOUND)
      message(WARNING "Google Benchmark was not found: the benchmarks are left out")
    endif()
  endif()
  if(benchmark_FOUND)
    foreach(source IN LISTS bench_sources)
      get_filename_component(name "${source}" NAME_WE)
      add_executable(bench_${name} "${source}")
      target_link_libraries(bench_${name} PRIVATE ${test_libraries} benchmark::benchmark)
      kestro_test_program(bench_${name})
      set_target_properties(bench_${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bench")
    endforeach()
    # The start-up benchmark runs two programs of its own choice.
    if(TARGET kestro-cti AND TARGET bench_startup_bench)
      add_executable(minimal_tray "${CMAKE_SOURCE_DIR}/bench/programs/minimal_tray.cpp")
      target_link_libraries(minimal_tray PRIVATE Qt6::Widgets)
      set_target_properties(minimal_tray PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bench")
      target_compile_definitions(bench_startup_bench PRIVATE "KESTRO_BENCH_DIR=\"${CMAKE_BINARY_DIR}/bench\"")
      add_dependencies(bench_startup_bench kestro-cti minimal_tray)
    endif()
  endif()
endif()
