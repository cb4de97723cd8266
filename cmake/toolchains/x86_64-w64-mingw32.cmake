# Windows on x86_64, built with mingw-w64 (Debian: g++-mingw-w64-x86-64-posix).
set(KESTRO_MINGW_MACHINE x86_64)
include("${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake")
