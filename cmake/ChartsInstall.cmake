# SPDX-License-Identifier: MIT
# What is installed: the library, its headers as <ChartsLibrary/Name.h>, the CMake package with the
# target Charts::ChartsLibrary, a pkg-config file, and the QML module where Qt looks for modules
# when the prefix is Qt's own. In three components, which can be installed apart: Runtime, QmlModule
# and Development.
include(CMakePackageConfigHelpers)

set(CHARTS_INSTALL_QMLDIR ${QT6_INSTALL_QML} CACHE STRING
    "Folder for QML modules, relative to the installation prefix")
set(charts_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/ChartsLibrary)
set(charts_header_dir ${CMAKE_INSTALL_INCLUDEDIR}/ChartsLibrary)
set(charts_module_dir ${CHARTS_INSTALL_QMLDIR}/zel/charts)

install(TARGETS ChartsLibrary
    EXPORT ChartsLibraryTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        COMPONENT Runtime NAMELINK_COMPONENT Development)
install(EXPORT ChartsLibraryTargets
    NAMESPACE Charts::
    DESTINATION ${charts_package_dir}
    COMPONENT Development)

get_target_property(charts_public_headers ChartsLibrary CHARTS_PUBLIC_HEADERS)
install(FILES
        ${charts_public_headers}
        ${PROJECT_BINARY_DIR}/include/ChartsLibrary/ChartsExport.h
    DESTINATION ${charts_header_dir}
    COMPONENT Development)

# What Qt has to know of the classes to describe those that a program derives from them to QML.
get_target_property(charts_metatypes ChartsLibrary INTERFACE_QT_META_TYPES_BUILD_FILE)
install(FILES ${charts_metatypes}
    DESTINATION ${charts_package_dir}
    RENAME metatypes.json
    COMPONENT Development)
set(charts_metatypes $<INSTALL_PREFIX>/${charts_package_dir}/metatypes.json)
target_sources(ChartsLibrary INTERFACE
    $<INSTALL_INTERFACE:$<$<BOOL:$<TARGET_PROPERTY:QT_CONSUMES_METATYPES>>:${charts_metatypes}>>)

# The plugin finds the library wherever the tree is moved to.
file(RELATIVE_PATH charts_plugin_to_library
    /${charts_module_dir} /${CMAKE_INSTALL_LIBDIR})
set_target_properties(ChartsLibraryplugin PROPERTIES
    INSTALL_RPATH "$ORIGIN/${charts_plugin_to_library}")
install(TARGETS ChartsLibraryplugin
    LIBRARY DESTINATION ${charts_module_dir} COMPONENT QmlModule)
install(FILES
        ${PROJECT_BINARY_DIR}/qml/zel/charts/qmldir
        ${PROJECT_BINARY_DIR}/qml/zel/charts/ChartsLibrary.qmltypes
    DESTINATION ${charts_module_dir}
    COMPONENT QmlModule)

configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/ChartsLibraryConfig.cmake.in
    ${PROJECT_BINARY_DIR}/ChartsLibraryConfig.cmake
    INSTALL_DESTINATION ${charts_package_dir}
    PATH_VARS CHARTS_INSTALL_QMLDIR)
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/ChartsLibraryConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
        ${PROJECT_BINARY_DIR}/ChartsLibraryConfig.cmake
        ${PROJECT_BINARY_DIR}/ChartsLibraryConfigVersion.cmake
    DESTINATION ${charts_package_dir}
    COMPONENT Development)

# As the rest of the tree, it holds wherever it is installed or moved to.
file(RELATIVE_PATH charts_pc_to_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(
    ${PROJECT_SOURCE_DIR}/cmake/ChartsLibrary.pc.in ${PROJECT_BINARY_DIR}/ChartsLibrary.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ChartsLibrary.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT Development)
