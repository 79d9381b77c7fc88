# The library's layers: one static library per folder. A layer includes and links only itself and the layers named here,
# and the build rejects any other include.

# aibridge_check_includes(<folder> <folder that it may include>...)
function(aibridge_check_includes folder)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.h ${CMAKE_SOURCE_DIR}/${folder}/*.cpp)
    set(stamp ${CMAKE_BINARY_DIR}/includes/${folder}.stamp)
    list(JOIN ARGN "," allowed)
    add_custom_command(OUTPUT ${stamp}
        COMMAND ${CMAKE_COMMAND} -D ROOT=${CMAKE_SOURCE_DIR} -D FOLDER=${folder} -D ALLOWED=${allowed} -D STAMP=${stamp}
                -P ${CMAKE_SOURCE_DIR}/cmake/CheckIncludes.cmake
        DEPENDS ${sources} ${CMAKE_SOURCE_DIR}/cmake/CheckIncludes.cmake
        COMMENT "Checking the includes of ${folder}/"
        VERBATIM)
    add_custom_target(includes_${folder} ALL DEPENDS ${stamp})
endfunction()

# aibridge_layer(<folder> SOURCES <file>... [MAY_INCLUDE <folder>...] [LIBRARIES <target>...])
# Makes the target aibridge_<folder>.
function(aibridge_layer folder)
    cmake_parse_arguments(ARG "" "" "SOURCES;MAY_INCLUDE;LIBRARIES" ${ARGN})
    add_library(aibridge_${folder} STATIC ${ARG_SOURCES})
    target_include_directories(aibridge_${folder} PUBLIC ${CMAKE_SOURCE_DIR})
    target_link_libraries(aibridge_${folder} PUBLIC ${ARG_LIBRARIES} PRIVATE project_options)
    foreach(lower ${ARG_MAY_INCLUDE})
        if(TARGET aibridge_${lower})
            target_link_libraries(aibridge_${folder} PUBLIC aibridge_${lower})
        endif()
    endforeach()
    aibridge_check_includes(${folder} ${ARG_MAY_INCLUDE})
    add_dependencies(aibridge_${folder} includes_${folder})
    set_property(GLOBAL APPEND PROPERTY AIBRIDGE_LAYERS aibridge_${folder})
endfunction()
