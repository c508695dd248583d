# SPDX-License-Identifier: MIT
# The packages for Debian and relatives, one for each component of the installation:
#
#   libchartslibrary1        the library, named after its SONAME
#   qml6-module-zel-charts   the QML module, for documents that no program linked to the library loads
#   libchartslibrary-dev     headers, CMake package, pkg-config file
#
# Debian's folders come with the prefix: configured with /usr, CMake's install folders carry the name of
# the architecture. scripts/package.sh builds them so.

set(CHARTS_PACKAGE_RELEASE 1 CACHE STRING "Revision of the Debian packages")
set(CHARTS_PACKAGE_MAINTAINER "The ChartsLibrary authors <chartslibrary@localhost>" CACHE STRING
    "Who answers for the Debian packages: a name and an address")
set(runtime_package libchartslibrary${PROJECT_VERSION_MAJOR})
set(qml_package qml6-module-zel-charts)
set(development_package libchartslibrary-dev)

set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL Runtime QmlModule Development)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
# Whatever umask the packages are built under.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_PACKAGE_NAME ChartsLibrary)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${CHARTS_PACKAGE_MAINTAINER}")
# Or CPack would put it above each package's own summary.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_NAME chartslibrary)
set(CPACK_DEBIAN_PACKAGE_SOURCE chartslibrary)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CHARTS_PACKAGE_RELEASE})

# The libraries that a package needs are those that its programs name. The library itself is not
# installed while its packages are built.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)

# The packages of one build belong together.
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_COMPONENT_QMLMODULE_DEPENDS Runtime)
set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS Runtime)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime_package})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
# What packages of programs will name. CPack's own way takes the plugin for a library as well.
file(WRITE ${PROJECT_BINARY_DIR}/shlibs
    "libChartsLibrary ${PROJECT_VERSION_MAJOR} ${runtime_package} (>= ${PROJECT_VERSION})\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_BINARY_DIR}/shlibs)
# What the module, also the one within the library, imports. Debian 12's QtQuick does not name those
# that it imports itself.
set(imported_modules "qml6-module-qtquick, qml6-module-qtqml, qml6-module-qtqml-models, \
qml6-module-qtqml-workerscript")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "${imported_modules}")
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${PROJECT_DESCRIPTION}
The shared library. It draws traces that an application writes in C++, with
OpenGL, beside cartesian, polar and Smith chart grids, and holds the QML module
zel.charts for the programs that link it.")

set(CPACK_DEBIAN_QMLMODULE_PACKAGE_NAME ${qml_package})
set(CPACK_DEBIAN_QMLMODULE_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_QMLMODULE_PACKAGE_DEPENDS "${imported_modules}")
set(CPACK_COMPONENT_QMLMODULE_DESCRIPTION "${PROJECT_DESCRIPTION} - QML module
The module zel.charts for QML documents that are loaded without a program that
links the library, and its type description for tools.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${development_package})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "qt6-base-dev (>= 6.4), qt6-declarative-dev (>= 6.4)")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS ${qml_package})
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "${PROJECT_DESCRIPTION} - development files
Headers, the CMake package ChartsLibrary and the pkg-config file of the same
name.")

# Nothing of it belongs into an installation that is no package.
foreach(component IN ITEMS Runtime QmlModule Development)
    string(TOUPPER ${component} key)
    install(FILES ${PROJECT_SOURCE_DIR}/LICENSE
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${CPACK_DEBIAN_${key}_PACKAGE_NAME}
        RENAME copyright
        COMPONENT ${component} EXCLUDE_FROM_ALL)
endforeach()

include(CPack)
