# Builds for 64-bit Windows with MinGW. scripts/windows/toolchain creates the toolchain's folder (Qt, Thrift,
# GoogleTest); the environment variable AIBRIDGE_WINDOWS_TOOLCHAIN overrides it.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)

if(NOT AIBRIDGE_WINDOWS_TOOLCHAIN)
    set(AIBRIDGE_WINDOWS_TOOLCHAIN $ENV{AIBRIDGE_WINDOWS_TOOLCHAIN})
endif()
if(NOT AIBRIDGE_WINDOWS_TOOLCHAIN)
    execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/../scripts/windows/toolchain --path
        OUTPUT_VARIABLE AIBRIDGE_WINDOWS_TOOLCHAIN OUTPUT_STRIP_TRAILING_WHITESPACE)
endif()
set(AIBRIDGE_WINDOWS_TOOLCHAIN ${AIBRIDGE_WINDOWS_TOOLCHAIN} CACHE PATH "Qt, Thrift and GoogleTest for Windows")
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES AIBRIDGE_WINDOWS_TOOLCHAIN)

set(toolchain ${AIBRIDGE_WINDOWS_TOOLCHAIN})
set(CMAKE_FIND_ROOT_PATH ${toolchain}/qt ${toolchain}/thrift ${toolchain}/googletest /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} ${toolchain}/thrift/lib/pkgconfig)

# Boost's headers alone, and headers with capitalised names, which this compiler does not have.
set(AIBRIDGE_THRIFT_EXTRA_INCLUDES ${toolchain}/boost ${toolchain}/shims)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/windows/wine-run)
