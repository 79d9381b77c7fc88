# Compiler settings for our own code, as an interface target. Generated code and external headers do not use them.

option(AIBRIDGE_WERROR "Treat warnings of our own code as errors" ON)
option(AIBRIDGE_COVERAGE "Instrument the build for coverage" OFF)
set(AIBRIDGE_SANITIZE "" CACHE STRING "Sanitizers for everything built here, e.g. address,undefined")

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    # ccache hashes paths relative to the tree, so that clones share cache entries.
    set(launcher ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE_PROGRAM})
    set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
endif()

add_library(project_options INTERFACE)
target_compile_features(project_options INTERFACE cxx_std_17)
target_compile_definitions(project_options INTERFACE QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII
    QT_DISABLE_DEPRECATED_BEFORE=0x050F00 $<$<PLATFORM_ID:Windows>:NOMINMAX>)
target_compile_options(project_options INTERFACE
    $<$<COMPILE_LANG_AND_ID:CXX,GNU,Clang>:-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
    -Woverloaded-virtual -Wno-psabi>)
if(AIBRIDGE_WERROR)
    target_compile_options(project_options INTERFACE $<$<COMPILE_LANG_AND_ID:CXX,GNU,Clang>:-Werror>)
endif()

if(AIBRIDGE_SANITIZE)
    # -g1: a report needs files and lines only, and full debug information takes a quarter of the compile time.
    add_compile_options(-fsanitize=${AIBRIDGE_SANITIZE} -fno-omit-frame-pointer -O1 -g1)
    add_link_options(-fsanitize=${AIBRIDGE_SANITIZE})
endif()

if(AIBRIDGE_COVERAGE)
    # Threads and processes update the counters concurrently.
    add_compile_options(--coverage -fprofile-update=atomic -O0)
    add_link_options(--coverage)
endif()

# Instruments all code of this build for the programs in fuzz/. Requires clang.
option(AIBRIDGE_FUZZ "Build the fuzz targets" OFF)
if(AIBRIDGE_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
