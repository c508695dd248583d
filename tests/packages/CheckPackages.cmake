# SPDX-License-Identifier: MIT
# Reads the packages in FOLDER back, with DPKG_DEB: what they say of themselves, what lies in them and with
# which rights. Takes VERSION and RELEASE, LIBRARY_FOLDER, INCLUDE_FOLDER and QML_FOLDER (relative to
# /usr), LICENCE, READELF, CONFIGURATION and, separated by commas, HEADERS.
cmake_minimum_required(VERSION 3.25)

string(REPLACE "," ";" HEADERS "${HEADERS}")
string(TOLOWER "${CONFIGURATION}" configuration)
string(REGEX MATCH "^[0-9]+" major ${VERSION})
set(runtime libchartslibrary${major})
set(module qml6-module-zel-charts)
set(development libchartslibrary-dev)
set(version ${VERSION}-${RELEASE})

function(run variable)
    execute_process(COMMAND ${ARGN}
        OUTPUT_VARIABLE output OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(${variable} "${output}" PARENT_SCOPE)
endfunction()

run(architecture dpkg --print-architecture)

# --- Which packages
file(GLOB found RELATIVE ${FOLDER} ${FOLDER}/*.deb)
set(expected
    ${development}_${version}_${architecture}.deb
    ${runtime}_${version}_${architecture}.deb
    ${module}_${version}_${architecture}.deb)
list(SORT found)
list(SORT expected)
if(NOT found STREQUAL expected)
    message(FATAL_ERROR "packages: ${found}\ninstead of: ${expected}")
endif()

# --- What they say of themselves
function(expect_field package field)
    run(value ${DPKG_DEB} -f ${FOLDER}/${package}_${version}_${architecture}.deb ${field})
    if(NOT value STREQUAL "${ARGN}")
        message(SEND_ERROR "${package}: ${field} is '${value}' instead of '${ARGN}'")
    endif()
endfunction()

# One entry at a time, each a name, or a name and a condition.
function(expect_relations package field)
    run(value ${DPKG_DEB} -f ${FOLDER}/${package}_${version}_${architecture}.deb ${field})
    string(REPLACE ", " ";" entries "${value}")
    foreach(relation IN LISTS ARGN)
        set(candidates ${entries})
        if(NOT relation MATCHES "\\(")
            list(TRANSFORM candidates REPLACE " \\(.*" "")
            # As Debian 13 calls libraries in which the type of times has grown.
            list(TRANSFORM candidates REPLACE "t64$" "")
        endif()
        if(NOT relation IN_LIST candidates)
            message(SEND_ERROR "${package}: ${field} lacks ${relation}: ${value}")
        endif()
    endforeach()
endfunction()

set(summaries)
foreach(package IN ITEMS ${runtime} ${module} ${development})
    expect_field(${package} Package ${package})
    expect_field(${package} Version ${version})
    expect_field(${package} Source chartslibrary)
    expect_field(${package} Architecture ${architecture})
    run(description ${DPKG_DEB} -f ${FOLDER}/${package}_${version}_${architecture}.deb Description)
    # A short line, then a paragraph of which each line has one blank in front.
    if(NOT description MATCHES "^([A-Z][^\n]+)(\n [^ \n][^\n]+)+$")
        message(SEND_ERROR "${package}: description\n${description}")
    endif()
    list(APPEND summaries "${CMAKE_MATCH_1}")
    string(LENGTH "${CMAKE_MATCH_1}" length)
    if(length GREATER 80)
        message(SEND_ERROR "${package}: a summary of ${length} characters")
    endif()
endforeach()
list(REMOVE_DUPLICATES summaries)
list(LENGTH summaries count)
if(NOT count EQUAL 3)
    message(SEND_ERROR "packages with one summary: ${summaries}")
endif()
expect_field(${runtime} Section libs)
expect_field(${module} Section libs)
expect_field(${development} Section libdevel)
expect_relations(${runtime} Depends
    libc6 libqt6core6 libqt6gui6 libqt6opengl6 libqt6qml6 libqt6quick6 libqt6concurrent6)
expect_relations(${module} Depends "${runtime} (= ${version})" libqt6qml6
    qml6-module-qtquick qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript)
expect_relations(${development} Depends
    "${runtime} (= ${version})" qt6-base-dev qt6-declarative-dev)
expect_relations(${development} Recommends ${module})

# --- What lies in them
set(package_folder ${LIBRARY_FOLDER}/cmake/ChartsLibrary)
set(${runtime}_files
    ${LIBRARY_FOLDER}/libChartsLibrary.so.${major} ${LIBRARY_FOLDER}/libChartsLibrary.so.${VERSION})
set(${module}_files
    ${QML_FOLDER}/zel/charts/qmldir
    ${QML_FOLDER}/zel/charts/ChartsLibrary.qmltypes
    ${QML_FOLDER}/zel/charts/libChartsLibraryplugin.so)
set(${development}_files
    ${LIBRARY_FOLDER}/libChartsLibrary.so
    ${LIBRARY_FOLDER}/pkgconfig/ChartsLibrary.pc
    ${package_folder}/ChartsLibraryConfig.cmake
    ${package_folder}/ChartsLibraryConfigVersion.cmake
    ${package_folder}/ChartsLibraryTargets.cmake
    ${package_folder}/ChartsLibraryTargets-${configuration}.cmake
    ${package_folder}/metatypes.json)
foreach(header IN LISTS HEADERS ITEMS ChartsExport.h)
    list(APPEND ${development}_files ${INCLUDE_FOLDER}/ChartsLibrary/${header})
endforeach()

foreach(package IN ITEMS ${runtime} ${module} ${development})
    set(file ${FOLDER}/${package}_${version}_${architecture}.deb)
    set(expected usr/share/doc/${package}/copyright)
    foreach(path IN LISTS ${package}_files)
        list(APPEND expected usr/${path})
    endforeach()

    run(listing ${DPKG_DEB} -c ${file})
    string(REPLACE "\n" ";" listing "${listing}")
    set(found)
    foreach(line IN LISTS listing)
        string(REGEX MATCH "^([^ ]+) +([^ ]+) +.* \\./([^ ]*)( -> .*)?$" matched "${line}")
        set(rights ${CMAKE_MATCH_1})
        set(owner ${CMAKE_MATCH_2})
        set(path ${CMAKE_MATCH_3})
        if(NOT owner STREQUAL "root/root")
            message(SEND_ERROR "${package}: ${path} belongs to ${owner}")
        endif()
        if(NOT rights MATCHES "^(drwxr-xr-x|-rw-r--r--|lrwxrwxrwx)$")
            message(SEND_ERROR "${package}: ${path} has the rights ${rights}")
        endif()
        if(NOT rights MATCHES "^d")
            list(APPEND found ${path})
        endif()
    endforeach()
    list(SORT found)
    list(SORT expected)
    if(NOT found STREQUAL expected)
        set(missing ${expected})
        list(REMOVE_ITEM missing ${found})
        list(REMOVE_ITEM found ${expected})
        message(SEND_ERROR "${package}: not there: ${missing}; not expected: ${found}")
    endif()

    set(root ${FOLDER}/${package})
    run(output ${DPKG_DEB} -x ${file} ${root})
    run(output ${DPKG_DEB} -e ${file} ${root}/DEBIAN)
    run(output ${CMAKE_COMMAND} -E compare_files ${LICENCE} ${root}/usr/share/doc/${package}/copyright)
endforeach()

# --- What the loader and other packages go by
run(sections ${READELF} -SW
    ${FOLDER}/${runtime}/usr/${LIBRARY_FOLDER}/libChartsLibrary.so.${VERSION})
if(sections MATCHES "\\.debug_info")
    message(SEND_ERROR "${runtime}: the library carries its debug information")
endif()
file(READ ${FOLDER}/${runtime}/DEBIAN/shlibs shlibs)
if(NOT shlibs STREQUAL "libChartsLibrary ${major} ${runtime} (>= ${VERSION})\n")
    message(SEND_ERROR "${runtime}: shlibs are\n${shlibs}")
endif()
file(READ ${FOLDER}/${runtime}/DEBIAN/postinst script)
if(NOT script MATCHES "ldconfig")
    message(SEND_ERROR "${runtime}: the loader's cache is not renewed")
endif()
