# SPDX-License-Identifier: MIT
# Compares what lies below PREFIX with what the package is to hold. Takes VERSION, CONFIGURATION,
# LIBRARY_FOLDER, INCLUDE_FOLDER and QML_FOLDER (relative to PREFIX), READELF, and, separated by
# commas, HEADERS and FOREIGN_FOLDERS, of which nothing may be heard in the package.
cmake_minimum_required(VERSION 3.25)

string(REPLACE "," ";" HEADERS "${HEADERS}")
string(REPLACE "," ";" FOREIGN_FOLDERS "${FOREIGN_FOLDERS}")
string(REGEX MATCH "^[0-9]+" major ${VERSION})
string(TOLOWER "${CONFIGURATION}" configuration)
if(NOT configuration)
    set(configuration noconfig)
endif()

set(library ${LIBRARY_FOLDER}/libChartsLibrary.so)
set(package ${LIBRARY_FOLDER}/cmake/ChartsLibrary)
set(pkg_config ${LIBRARY_FOLDER}/pkgconfig/ChartsLibrary.pc)
set(module ${QML_FOLDER}/zel/charts)
set(plugin ${module}/libChartsLibraryplugin.so)
set(cmake_files
    ${package}/ChartsLibraryConfig.cmake
    ${package}/ChartsLibraryConfigVersion.cmake
    ${package}/ChartsLibraryTargets.cmake
    ${package}/ChartsLibraryTargets-${configuration}.cmake
    ${package}/metatypes.json)

# --- Which files
set(expected
    ${library} ${library}.${major} ${library}.${VERSION}
    ${cmake_files}
    ${pkg_config}
    ${module}/qmldir ${module}/ChartsLibrary.qmltypes ${plugin})
foreach(header IN LISTS HEADERS ITEMS ChartsExport.h)
    list(APPEND expected ${INCLUDE_FOLDER}/ChartsLibrary/${header})
endforeach()
file(GLOB_RECURSE found LIST_DIRECTORIES false RELATIVE ${PREFIX} ${PREFIX}/*)
set(missing ${expected})
list(REMOVE_ITEM missing ${found})
set(unexpected ${found})
list(REMOVE_ITEM unexpected ${expected})
if(missing)
    message(SEND_ERROR "not installed: ${missing}")
endif()
if(unexpected)
    message(SEND_ERROR "installed, but no part of the package: ${unexpected}")
endif()
# That a class is public is said in one place; a few must be, whatever it says.
foreach(name IN ITEMS AbstractTrace TraceData TraceDomain Span Chart ZoomDelegate ChartMouseEvent)
    if(NOT ${name}.h IN_LIST HEADERS)
        message(SEND_ERROR "no public header: ${name}.h")
    endif()
endforeach()

# --- The library's names
foreach(link IN ITEMS "${library}|libChartsLibrary.so.${major}"
        "${library}.${major}|libChartsLibrary.so.${VERSION}")
    string(REPLACE "|" ";" link "${link}")
    list(GET link 0 name)
    list(GET link 1 target)
    if(NOT IS_SYMLINK ${PREFIX}/${name})
        message(SEND_ERROR "no link: ${name}")
        continue()
    endif()
    file(READ_SYMLINK ${PREFIX}/${name} actual)
    if(NOT actual STREQUAL target)
        message(SEND_ERROR "${name} leads to ${actual} instead of ${target}")
    endif()
endforeach()

# --- What the loader reads
foreach(file IN ITEMS ${library}.${VERSION} ${plugin})
    execute_process(COMMAND ${READELF} -dW ${PREFIX}/${file}
        OUTPUT_VARIABLE entries COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "\\((RPATH|RUNPATH)\\)[^\n]*" paths "${entries}")
    foreach(path IN LISTS paths)
        if(NOT path MATCHES "\\[\\$ORIGIN(/[./]*)?\\]$")
            message(SEND_ERROR "${file} looks for libraries in ${path}")
        endif()
    endforeach()
    if(file STREQUAL plugin AND NOT paths)
        message(SEND_ERROR "${file} cannot find the library")
    endif()
endforeach()
execute_process(COMMAND ${READELF} -dW ${PREFIX}/${library}.${VERSION}
    OUTPUT_VARIABLE entries COMMAND_ERROR_IS_FATAL ANY)
if(NOT entries MATCHES "\\(SONAME\\)[^\n]*\\[libChartsLibrary\\.so\\.${major}\\]")
    message(SEND_ERROR "the library's SONAME is not libChartsLibrary.so.${major}")
endif()

# --- The module
file(READ ${PREFIX}/${module}/qmldir text)
set(expected_text "module zel.charts
linktarget ChartsLibraryplugin
optional plugin ChartsLibraryplugin
classname zel_chartsPlugin
typeinfo ChartsLibrary.qmltypes
prefer :/qt/qml/zel/charts/
depends QtQuick

")
file(SIZE ${PREFIX}/${module}/qmldir size)
if(NOT text STREQUAL expected_text OR NOT size EQUAL 189)
    message(SEND_ERROR "qmldir (${size} bytes):\n${text}")
endif()

# --- Nothing of this machine in what others read
foreach(file IN LISTS found)
    if(file MATCHES "\\.so(\\.|$)")
        continue()
    endif()
    file(READ ${PREFIX}/${file} text)
    foreach(folder IN LISTS FOREIGN_FOLDERS)
        string(FIND "${text}" "${folder}" position)
        if(NOT position EQUAL -1)
            message(SEND_ERROR "${file} names ${folder}")
        endif()
    endforeach()
endforeach()
