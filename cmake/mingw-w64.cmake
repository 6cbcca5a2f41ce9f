# Cross toolchain: MinGW-w64 x86_64 with the posix thread model (std::thread,
# std::mutex), producing 64-bit Windows binaries that run on a bare Windows or
# under Wine without any MinGW runtime DLL next to them.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(QV_MINGW_PREFIX x86_64-w64-mingw32)
set(CMAKE_C_COMPILER   ${QV_MINGW_PREFIX}-gcc-posix)
set(CMAKE_CXX_COMPILER ${QV_MINGW_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER  ${QV_MINGW_PREFIX}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${QV_MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# Packages are looked for in the MinGW root and in the prefixes a build names
# (CMAKE_PREFIX_PATH), so a package installed into a scratch prefix is found.
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

