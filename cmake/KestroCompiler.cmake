# Language level, warnings, sanitizers and the compiler cache.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(KESTRO_CCACHE ccache)
  if(KESTRO_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${KESTRO_CCACHE}")
  endif()
endif()

# Warnings are a usage requirement of our own targets only; Qt, GoogleTest and SQLite are system headers.
add_library(kestro_warnings INTERFACE)
target_compile_options(
  kestro_warnings
  INTERFACE -Werror
            -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wsign-conversion
            -Wdouble-promotion
            -Wold-style-cast
            -Wcast-align
            -Wcast-qual
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            -Wextra-semi
            -Wformat=2
            -Wimplicit-fallthrough
            -Wundef
            -Wunused)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(kestro_warnings INTERFACE -Wduplicated-cond -Wlogical-op -Wsuggest-override)
  if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 reports overlapping copies inside std::string's own operator+ when it inlines it (GCC bug 105651).
    target_compile_options(kestro_warnings INTERFACE -Wno-restrict)
  endif()
  if(KESTRO_SANITIZE)
    # The instrumentation hides initialisations from the data-flow analysis: false alarms only.
    target_compile_options(kestro_warnings INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()

# Test code takes longer to optimise than it ever runs; what it tests is optimised as it is delivered.
add_library(kestro_test_code INTERFACE)
target_compile_options(kestro_test_code INTERFACE -O0 -U_FORTIFY_SOURCE)

# No path of the building machine ends up in a program or in a message (debug information keeps it).
add_compile_options("-fmacro-prefix-map=${CMAKE_SOURCE_DIR}/=")

if(KESTRO_SANITIZE)
  add_compile_options("-fsanitize=${KESTRO_SANITIZE}" -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options("-fsanitize=${KESTRO_SANITIZE}")
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
elseif(NOT WIN32)
  add_compile_options(-fstack-protector-strong)
  add_compile_definitions("$<$<CONFIG:Release>:_FORTIFY_SOURCE=2>")
endif()
