# What hosts build with: headers, the CMake package DetailStyles with the target DetailStyles::detailstyles, and
# detailstyles.pc for others.
include(CMakePackageConfigHelpers)
set(sdk ${CMAKE_CURRENT_BINARY_DIR}/sdk)
set(headers ${CMAKE_INSTALL_INCLUDEDIR}/detailstyles)
set(cmake_package ${CMAKE_INSTALL_LIBDIR}/cmake/DetailStyles)

# Windows are QWidgets, and a host brings the QApplication.
target_compile_features(module INTERFACE cxx_std_20)
target_link_libraries(module INTERFACE Qt6::Widgets)
target_include_directories(module INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
    $<INSTALL_INTERFACE:${headers}/internal>)

build_at_install(module library development sdk module)
install(TARGETS module EXPORT DetailStylesTargets LIBRARY COMPONENT library NAMELINK_COMPONENT development)
foreach(whole sdk module)
    install(TARGETS module LIBRARY COMPONENT ${whole} EXCLUDE_FROM_ALL)
endforeach()
install_part(development EXPORT DetailStylesTargets NAMESPACE DetailStyles:: DESTINATION ${cmake_package})
write_basic_package_version_file(${sdk}/DetailStylesConfigVersion.cmake COMPATIBILITY SameMajorVersion)
file(GENERATE OUTPUT ${sdk}/DetailStylesConfig.cmake CONTENT
"include(CMakeFindDependencyMacro)
find_dependency(Qt6 ${DETAILSTYLES_QT} COMPONENTS Widgets)
include(\${CMAKE_CURRENT_LIST_DIR}/DetailStylesTargets.cmake)
")
install_part(development FILES ${sdk}/DetailStylesConfig.cmake ${sdk}/DetailStylesConfigVersion.cmake
    DESTINATION ${cmake_package})

# Its place says where the headers and the library are, so that the tree can be moved.
file(RELATIVE_PATH up ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
file(CONFIGURE OUTPUT ${sdk}/detailstyles.pc @ONLY CONTENT
[[prefix=${pcfiledir}/@up@
includedir=${prefix}/@CMAKE_INSTALL_INCLUDEDIR@
libdir=${prefix}/@CMAKE_INSTALL_LIBDIR@

Name: DetailStyles
Description: Detail styles manager for hosts (C++@CMAKE_CXX_STANDARD@ or later)
Version: @PROJECT_VERSION@
Requires: Qt6Widgets >= @DETAILSTYLES_QT@
Cflags: -std=c++@CMAKE_CXX_STANDARD@ -I${includedir} -I${includedir}/detailstyles/internal
Libs: -L${libdir} -ldetailstyles
]])
install_part(development FILES ${sdk}/detailstyles.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

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
install_part(development FILES ${public_headers} DESTINATION ${headers})
while(included)
    list(POP_FRONT included name file)
    get_filename_component(folder ${name} DIRECTORY)
    install_part(development FILES ${file} DESTINATION ${headers}/internal/${folder})
endwhile()
