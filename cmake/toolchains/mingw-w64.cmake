# What the two Windows toolchains have in common; KESTRO_MINGW_MACHINE is "x86_64" or "i686".
# The POSIX-threads flavour of the compiler has std::thread and std::mutex; everything is linked statically, so
# that nothing has to be installed beside the program.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR "${KESTRO_MINGW_MACHINE}")
set(kestro_mingw_prefix "${KESTRO_MINGW_MACHINE}-w64-mingw32")
set(CMAKE_C_COMPILER "${kestro_mingw_prefix}-gcc-posix")
set(CMAKE_CXX_COMPILER "${kestro_mingw_prefix}-g++-posix")
set(CMAKE_RC_COMPILER "${kestro_mingw_prefix}-windres")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

set(CMAKE_FIND_ROOT_PATH "/usr/${kestro_mingw_prefix}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
