# Debian packages, one for each component, and a tarball of everything: `cpack` in the build folder.
set(CPACK_PACKAGE_NAME detailstyles)
set(CPACK_PACKAGE_VENDOR "The makers of the Detail Styles Manager")
set(CPACK_PACKAGE_CONTACT "${CPACK_PACKAGE_VENDOR} <detailstyles@home.arpa>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL program library development data)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_BINARY_DIR}/CPackSettings.cmake)
execute_process(COMMAND date -u -d ${DETAILSTYLES_RELEASED} +%s OUTPUT_VARIABLE day OUTPUT_STRIP_TRAILING_WHITESPACE)
file(CONFIGURE OUTPUT ${CPACK_PROJECT_CONFIG_FILE} @ONLY CONTENT
[[if(CPACK_GENERATOR STREQUAL "DEB")
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
endif()
# The package of the library states itself what it needs, for with CPack's own way come scripts that the trigger
# made superfluous.
execute_process(COMMAND "@CMAKE_COMMAND@" --build "@CMAKE_BINARY_DIR@" --target module OUTPUT_QUIET)
file(WRITE "@CMAKE_BINARY_DIR@/shlibdeps/debian/control" "Source: detailstyles\n\nPackage: detailstyles\nArchitecture: any\n")
execute_process(COMMAND dpkg-shlibdeps -O "@CMAKE_BINARY_DIR@/src/libdetailstyles.so.@PROJECT_VERSION@"
    WORKING_DIRECTORY "@CMAKE_BINARY_DIR@/shlibdeps" OUTPUT_VARIABLE needs OUTPUT_STRIP_TRAILING_WHITESPACE
    ERROR_QUIET)
string(REPLACE "shlibs:Depends=" "" CPACK_DEBIAN_LIBRARY_PACKAGE_DEPENDS "${needs}")
# The same version gives the same bytes, whenever it is packed.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    set(ENV{SOURCE_DATE_EPOCH} @day@)
endif()
]])

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_PROGRAM_DEPENDS data)
set(CPACK_COMPONENT_LIBRARY_DEPENDS data)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS library)

# debian_package(COMPONENT NAME SECTION SUMMARY DESCRIPTION)
function(debian_package component name section summary description)
    string(TOUPPER ${component} id)
    set(CPACK_DEBIAN_${id}_DESCRIPTION "${summary}
A CAD for steel construction keeps the styles of its drawings in databases:
which views the drawing of a part has, what is dimensioned from which points,
which annotations stand where.
${description}" PARENT_SCOPE)
    set(CPACK_DEBIAN_${id}_PACKAGE_NAME ${name} PARENT_SCOPE)
    set(CPACK_DEBIAN_${id}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    install(FILES ${CMAKE_SOURCE_DIR}/packaging/copyright ${CMAKE_BINARY_DIR}/changelog.gz COMPONENT ${component}
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name})
endfunction()
debian_package(program detailstyles graphics "editor for the styles of steel drawings"
    "This is the editor for them, and a command line for the same work.")
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SUGGESTS "libodbc2, odbc-postgresql") # for databases on a server
debian_package(library libdetailstyles${PROJECT_VERSION_MAJOR} libs
    "editor for the styles of steel drawings, for hosts"
    "This library brings the editor for them into a host.")
debian_package(development libdetailstyles-dev libdevel "editor for the styles of steel drawings, headers"
    "This is what a host that brings the editor for them is built with.")
debian_package(data detailstyles-data graphics "editor for the styles of steel drawings, data"
    "This has the texts, pictures, help and samples of the editor for them.")
set(CPACK_DEBIAN_DATA_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DATA_PACKAGE_DEPENDS fonts-dejavu-core)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "qt6-base-dev (>= ${DETAILSTYLES_QT})")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${CMAKE_BINARY_DIR}/triggers ${CMAKE_BINARY_DIR}/shlibs)
file(WRITE ${CMAKE_BINARY_DIR}/shlibs
    "libdetailstyles ${PROJECT_VERSION_MAJOR} libdetailstyles${PROJECT_VERSION_MAJOR} (>= ${PROJECT_VERSION})\n")
file(WRITE ${CMAKE_BINARY_DIR}/triggers "activate-noawait ldconfig\n")

execute_process(COMMAND date -uR -d ${DETAILSTYLES_RELEASED} OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
configure_file(${CMAKE_SOURCE_DIR}/packaging/changelog.in ${CMAKE_BINARY_DIR}/changelog @ONLY)
execute_process(COMMAND gzip -9nkf ${CMAKE_BINARY_DIR}/changelog)
include(CPack)
