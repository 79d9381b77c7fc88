# Builds for 64-bit Windows with MinGW. The toolchain's folder (Qt, Thrift, GoogleTest; scripts/windows/toolchain
# makes it) comes from the environment variable AIBRIDGE_WINDOWS_TOOLCHAIN.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)

set(toolchain $ENV{AIBRIDGE_WINDOWS_TOOLCHAIN})
set(CMAKE_FIND_ROOT_PATH ${toolchain}/qt ${toolchain}/thrift ${toolchain}/googletest /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
