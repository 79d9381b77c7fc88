# Installs the build into a scratch prefix; an outside project then finds, links, loads and runs it.
# Variables: BUILD_DIR, SOURCE_DIR, SCRATCH_DIR, GENERATOR, CXX_FLAGS, THRIFT, MANUAL (true if the build makes manual pages).
file(REMOVE_RECURSE ${SCRATCH_DIR})
set(prefix ${SCRATCH_DIR}/prefix)

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN}\nexit code ${result}\n${output}\n${errors}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
# Moved before use, to show that the package is relocatable.
file(RENAME ${prefix} ${SCRATCH_DIR}/moved)
run(${CMAKE_COMMAND} -G ${GENERATOR} -S ${SOURCE_DIR} -B ${SCRATCH_DIR}/build
    -DCMAKE_PREFIX_PATH=${SCRATCH_DIR}/moved "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
run(${CMAKE_COMMAND} --build ${SCRATCH_DIR}/build)
run(${SCRATCH_DIR}/build/outside_host)
if(NOT output STREQUAL "AIBridge\nAnnehmen\n")
    message(FATAL_ERROR "the outside host printed: ${output}")
endif()

file(GLOB interface ${SCRATCH_DIR}/moved/share/aibridge/*.thrift)
run(${THRIFT} -strict --gen py -out ${SCRATCH_DIR} ${interface})
run(${SCRATCH_DIR}/moved/bin/zorcall --list)
set(files bash-completion/completions/zorcall zsh/site-functions/_zorcall)
if(MANUAL)
    list(APPEND files man/man1/zorcall.1 man/man1/zorhost.1)
endif()
foreach(file ${files})
    if(NOT EXISTS ${SCRATCH_DIR}/moved/share/${file})
        message(FATAL_ERROR "share/${file} is not installed")
    endif()
endforeach()
run(${SCRATCH_DIR}/moved/bin/zorhost --help)
