# What is installed, in four components: "program", "library", "development" and "data". "sdk" is all that a
# host needs, to build and to run: the latter three.

# build_at_install(TARGET COMPONENT...): what is not part of every build is built by the first installation.
function(build_at_install target)
    foreach(component ${ARGN})
        install(CODE "
            execute_process(COMMAND \"${CMAKE_COMMAND}\" --build \"${CMAKE_BINARY_DIR}\" --target ${target}
                RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
            if(NOT result EQUAL 0)
                message(FATAL_ERROR \"${target} could not be built:\\n\${output}\")
            endif()" COMPONENT ${component})
    endforeach()
endfunction()
# install_part(COMPONENT WHAT...): into the component and into those that it is part of.
function(install_part component)
    install(${ARGN} COMPONENT ${component})
    foreach(whole sdk module)
        install(${ARGN} COMPONENT ${whole} EXCLUDE_FROM_ALL)
    endforeach()
endfunction()

# Before the rules that take what is there.
foreach(target detailstyles desktop manual)
    build_at_install(${target} program)
endforeach()
install(TARGETS detailstyles RUNTIME COMPONENT program)
include(${CMAKE_SOURCE_DIR}/cmake/Desktop.cmake)
include(${CMAKE_SOURCE_DIR}/cmake/Manual.cmake)
include(${CMAKE_SOURCE_DIR}/cmake/Sdk.cmake)
install_part(data DIRECTORY ${CMAKE_SOURCE_DIR}/resources/ DESTINATION ${CMAKE_INSTALL_DATADIR}/detailstyles)
