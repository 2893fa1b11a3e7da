# SPDX-License-Identifier: Apache-2.0
# Installs the library, its public headers and the CMake package `corvane`.
include(CMakePackageConfigHelpers)

set(CORVANE_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/corvane)

install(TARGETS corvane EXPORT corvaneTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
foreach(header IN LISTS CORVANE_PUBLIC_HEADERS)
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/${header}
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/corvane/${folder})
endforeach()
install(FILES ${PROJECT_BINARY_DIR}/generated/corvane/corvane_export.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/corvane)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})

install(EXPORT corvaneTargets NAMESPACE corvane:: DESTINATION ${CORVANE_PACKAGE_DIR})
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/corvaneConfig.cmake.in
    ${PROJECT_BINARY_DIR}/corvaneConfig.cmake
    INSTALL_DESTINATION ${CORVANE_PACKAGE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/corvaneConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/corvaneConfig.cmake
    ${PROJECT_BINARY_DIR}/corvaneConfigVersion.cmake
    DESTINATION ${CORVANE_PACKAGE_DIR})
