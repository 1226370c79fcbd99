# The CMake package: find_package(DetailStyles) gives the target DetailStyles::detailstyles.
include(CMakePackageConfigHelpers)
target_include_directories(module INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/detailstyles>)
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

# What the headers of the two exported classes include.
foreach(room base data model)
    install(DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR}/${room} COMPONENT module
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/detailstyles FILES_MATCHING PATTERN "*.h"
        PATTERN store EXCLUDE PATTERN text EXCLUDE PATTERN exchange EXCLUDE PATTERN check EXCLUDE)
endforeach()
install(DIRECTORY ${CMAKE_SOURCE_DIR}/resources/ COMPONENT module
    DESTINATION ${CMAKE_INSTALL_DATADIR}/detailstyles)
