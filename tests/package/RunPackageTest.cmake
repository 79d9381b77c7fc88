# Installs the build into a scratch prefix and lets an outside project find, link, load and run it.
# Variables: BUILD_DIR, SOURCE_DIR, SCRATCH_DIR, GENERATOR, CXX_FLAGS, THRIFT.
file(REMOVE_RECURSE ${SCRATCH_DIR})
set(prefix ${SCRATCH_DIR}/prefix)

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN}\nended with ${result}\n${output}\n${errors}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
# The tree is found where it lies, not where it was made: it is moved before it is used.
file(RENAME ${prefix} ${SCRATCH_DIR}/moved)
run(${CMAKE_COMMAND} -G ${GENERATOR} -S ${SOURCE_DIR} -B ${SCRATCH_DIR}/build
    -DCMAKE_PREFIX_PATH=${SCRATCH_DIR}/moved "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
run(${CMAKE_COMMAND} --build ${SCRATCH_DIR}/build)
run(${SCRATCH_DIR}/build/outside_host)
if(NOT output STREQUAL "AIBridge\nAnnehmen\n")
    message(FATAL_ERROR "the outside host printed: ${output}")
endif()

# The interface file is whole and where the package says.
file(GLOB interface ${SCRATCH_DIR}/moved/share/aibridge/*.thrift)
run(${THRIFT} -strict --gen py -out ${SCRATCH_DIR} ${interface})
run(${SCRATCH_DIR}/moved/bin/zorcall --list)
run(${SCRATCH_DIR}/moved/bin/zorhost --help)
