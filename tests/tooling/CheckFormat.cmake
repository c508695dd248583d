# SPDX-License-Identifier: MIT
# Names each C++ file below the FOLDERS (separated by commas) of ROOT that clang-format, TOOL in VERSION,
# would write in another way.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/ToolVersion.cmake)
require_version(is_here)
if(NOT is_here)
    return()
endif()

set(patterns)
string(REPLACE "," ";" FOLDERS "${FOLDERS}")
foreach(folder IN LISTS FOLDERS)
    list(APPEND patterns ${ROOT}/${folder}/*.h ${ROOT}/${folder}/*.cpp)
endforeach()
file(GLOB_RECURSE files ${patterns})
list(LENGTH files count)
if(count LESS 100)
    message(FATAL_ERROR "only ${count} files in ${ROOT}")
endif()

execute_process(COMMAND ${TOOL} --dry-run --Werror ${files}
    ERROR_VARIABLE objections
    RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    string(REGEX MATCHALL "(^|\n)${ROOT}/[^:]+" paths "${objections}")
    list(TRANSFORM paths STRIP)
    list(REMOVE_DUPLICATES paths)
    foreach(path IN LISTS paths)
        message("not in the format: ${path}")
    endforeach()
    list(JOIN paths " " paths)
    message("To put that right: ${TOOL} -i ${paths}")
    message(FATAL_ERROR "clang-format ended with ${result}")
endif()
