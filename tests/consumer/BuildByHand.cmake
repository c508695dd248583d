# SPDX-License-Identifier: MIT
# Builds the program of SOURCE_FOLDER in WORK_FOLDER with COMPILER, MOC and what PKG_CONFIG says of
# the package in PREFIX, whose description lies in PKG_CONFIG_FOLDER.
cmake_minimum_required(VERSION 3.25)

set(ENV{PKG_CONFIG_PATH} ${PKG_CONFIG_FOLDER})

function(run variable)
    execute_process(COMMAND ${ARGN}
        OUTPUT_VARIABLE output
        OUTPUT_STRIP_TRAILING_WHITESPACE
        COMMAND_ERROR_IS_FATAL ANY)
    set(${variable} "${output}" PARENT_SCOPE)
endfunction()

run(version ${PKG_CONFIG} --modversion ChartsLibrary)
if(NOT version STREQUAL VERSION)
    message(SEND_ERROR "pkg-config tells of version ${version} instead of ${VERSION}")
endif()
# Compared as files: the description may take a way round.
foreach(pair IN ITEMS "includedir|ChartsLibrary/Chart.h" "libdir|libChartsLibrary.so"
        "qmldir|zel/charts/qmldir")
    string(REPLACE "|" ";" pair ${pair})
    list(GET pair 0 variable)
    list(GET pair 1 file)
    run(folder ${PKG_CONFIG} --variable=${variable} ChartsLibrary)
    file(REAL_PATH "${folder}/${file}" path)
    if(NOT EXISTS ${path})
        message(SEND_ERROR "${variable} is ${folder}, where there is no ${file}")
    endif()
    cmake_path(IS_PREFIX PREFIX ${path} NORMALIZE is_in_prefix)
    if(NOT is_in_prefix)
        message(SEND_ERROR "${variable} leads out of the package: ${folder}")
    endif()
endforeach()
run(flags ${PKG_CONFIG} --cflags ChartsLibrary)
run(libraries ${PKG_CONFIG} --libs ChartsLibrary)
separate_arguments(flags UNIX_COMMAND "${flags}")
separate_arguments(libraries UNIX_COMMAND "${libraries}")

file(REMOVE_RECURSE ${WORK_FOLDER})
file(MAKE_DIRECTORY ${WORK_FOLDER})
run(include_folder ${PKG_CONFIG} --variable=includedir ChartsLibrary)
include(${SOURCE_FOLDER}/AllHeaders.cmake)
write_all_headers(${include_folder} ${WORK_FOLDER}/AllHeaders.h)
# Qt wants position independent code, its descriptions do not say so.
run(output ${MOC} ${flags} ${SOURCE_FOLDER}/RampTrace.h -o ${WORK_FOLDER}/moc_RampTrace.cpp)
run(output ${COMPILER} -std=c++20 -fPIC ${flags} -I${WORK_FOLDER} -I${SOURCE_FOLDER}
    ${SOURCE_FOLDER}/main.cpp ${WORK_FOLDER}/moc_RampTrace.cpp ${libraries}
    -o ${WORK_FOLDER}/consumer)
