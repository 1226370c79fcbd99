# run(COMMAND...): what it prints is `output`; a failure ends the test.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE out)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN} failed (${result}):\n${out}")
    endif()
    set(output "${out}" PARENT_SCOPE)
endfunction()
