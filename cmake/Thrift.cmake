# The wire classes are generated from the interface file at build time. Their own target keeps our warnings away from
# the generated code and avoids recompiling it.

find_package(PkgConfig REQUIRED)
pkg_check_modules(THRIFT REQUIRED IMPORTED_TARGET thrift>=0.17)
if(WIN32)
    # The package declares neither its dependency on Boost's headers nor the system libraries for static linking.
    target_include_directories(PkgConfig::THRIFT SYSTEM INTERFACE ${AIBRIDGE_THRIFT_EXTRA_INCLUDES})
    target_link_libraries(PkgConfig::THRIFT INTERFACE ws2_32 shlwapi)
endif()

set(ZORNATIVE_THRIFT ${CMAKE_SOURCE_DIR}/service/ZORNativePlugin.thrift)
set(ZORNATIVE_GEN ${CMAKE_BINARY_DIR}/gen-cpp)
set(ZORNATIVE_JSON ${CMAKE_BINARY_DIR}/gen-json/ZORNativePlugin.json)

add_custom_command(
    OUTPUT ${ZORNATIVE_GEN}/ZORNativePlugin.cpp ${ZORNATIVE_GEN}/ZORNativePlugin.h
           ${ZORNATIVE_GEN}/ZORNativePlugin_types.cpp ${ZORNATIVE_GEN}/ZORNativePlugin_types.h
           ${ZORNATIVE_GEN}/ZORNativePlugin_constants.cpp ${ZORNATIVE_GEN}/ZORNativePlugin_constants.h
    COMMAND ${CMAKE_COMMAND} -E make_directory ${ZORNATIVE_GEN}
    COMMAND ${THRIFT_COMPILER} -strict --gen cpp:no_skeleton -out ${ZORNATIVE_GEN} ${ZORNATIVE_THRIFT}
    DEPENDS ${ZORNATIVE_THRIFT}
    COMMENT "Generating the C++ wire classes")

# The same interface as JSON, for zorcall and for tests.
add_custom_command(
    OUTPUT ${ZORNATIVE_JSON}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/gen-json
    COMMAND ${THRIFT_COMPILER} -strict --gen json -out ${CMAKE_BINARY_DIR}/gen-json ${ZORNATIVE_THRIFT}
    DEPENDS ${ZORNATIVE_THRIFT}
    COMMENT "Generating the interface description")
add_custom_target(zornative_json DEPENDS ${ZORNATIVE_JSON})

add_library(zornative STATIC
    ${ZORNATIVE_GEN}/ZORNativePlugin.cpp
    ${ZORNATIVE_GEN}/ZORNativePlugin_constants.cpp
    ${ZORNATIVE_GEN}/ZORNativePlugin_types.cpp)
set_target_properties(zornative PROPERTIES AUTOMOC OFF AUTORCC OFF)
target_include_directories(zornative SYSTEM PUBLIC ${ZORNATIVE_GEN})
target_link_libraries(zornative PUBLIC PkgConfig::THRIFT Threads::Threads)
target_compile_options(zornative PRIVATE -w)
