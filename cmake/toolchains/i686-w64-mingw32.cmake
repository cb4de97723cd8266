# Windows on i686, built with mingw-w64 (Debian: g++-mingw-w64-i686-posix).
set(KESTRO_MINGW_MACHINE i686)
include("${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake")
