# The CMake package: find_package(DetailStyles) gives the target DetailStyles::detailstyles.
include(CMakePackageConfigHelpers)
target_include_directories(module INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/detailstyles/internal>)
# Whoever built the program alone has no module yet.
install(CODE "
    execute_process(COMMAND \"${CMAKE_COMMAND}\" --build \"${CMAKE_BINARY_DIR}\" --target module
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR \"The module could not be built:\\n\${output}\")
    endif()" COMPONENT module)
install(TARGETS module EXPORT DetailStylesTargets COMPONENT module)
install(EXPORT DetailStylesTargets NAMESPACE DetailStyles:: COMPONENT module
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/DetailStyles)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/DetailStylesConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/DetailStylesConfig.cmake
    CONTENT "include(\${CMAKE_CURRENT_LIST_DIR}/DetailStylesTargets.cmake)\n")
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/DetailStylesConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/DetailStylesConfigVersion.cmake COMPONENT module
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/DetailStyles)

# The public headers, and in a folder below them the headers of the rooms that they include.
function(find_included headers found)
    set(todo ${headers})
    while(todo)
        list(POP_FRONT todo header)
        list(APPEND known ${header})
        file(STRINGS ${header} lines REGEX "^#include \"")
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
        foreach(line ${lines})
            string(REGEX REPLACE "^#include \"(.*)\".*" "\\1" name "${line}")
            foreach(root ${CMAKE_CURRENT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR}/host)
                if(EXISTS ${root}/${name} AND NOT ${root}/${name} IN_LIST known)
                    list(APPEND todo ${root}/${name})
                    list(APPEND names ${name} ${root}/${name})
                endif()
            endforeach()
        endforeach()
    endwhile()
    set(${found} ${names} PARENT_SCOPE)
endfunction()
file(GLOB public_headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/include/detailstyles/*.h)
find_included("${public_headers}" included)
install(FILES ${public_headers} COMPONENT module DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/detailstyles)
while(included)
    list(POP_FRONT included name file)
    get_filename_component(folder ${name} DIRECTORY)
    install(FILES ${file} COMPONENT module DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/detailstyles/internal/${folder})
endwhile()
install(DIRECTORY ${CMAKE_SOURCE_DIR}/resources/ COMPONENT module
    DESTINATION ${CMAKE_INSTALL_DATADIR}/detailstyles)
