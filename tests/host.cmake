# Installs the module into an empty folder, builds the example host against that package alone, and runs it
# on sample databases.
file(REMOVE_RECURSE ${WORK})
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE out)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN} failed (${result}):\n${out}")
    endif()
    set(output "${out}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix --component module)
run(${CMAKE_COMMAND} -S ${SOURCE}/examples/host -B ${WORK}/build -G Ninja -DCMAKE_BUILD_TYPE=Debug
    -DCMAKE_PREFIX_PATH=${WORK}/prefix -DCMAKE_CXX_FLAGS=${CXX_FLAGS})
run(${CMAKE_COMMAND} --build ${WORK}/build)
run(${PROGRAM} samples ${WORK}/data/detailstyles)
set(ENV{XDG_DATA_HOME} ${WORK}/data)
set(ENV{XDG_CONFIG_HOME} ${WORK}/config)
run(${WORK}/build/host --close)
if(NOT output MATCHES "result 2\nadd-ins 3\napplied 0")
    message(FATAL_ERROR "The host printed:\n${output}")
endif()
execute_process(COMMAND nm -DC --defined-only ${WORK}/prefix/lib/libdetailstyles.so OUTPUT_VARIABLE symbols
    RESULT_VARIABLE result)
if(result EQUAL 0 AND symbols MATCHES "[TDBRV] (KorOdbcMan|KorDSMMainDialog|StyleDatabases)::")
    message(FATAL_ERROR "The module shows more than its two classes.")
endif()
