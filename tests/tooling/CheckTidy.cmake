# SPDX-License-Identifier: MIT
# Lets clang-tidy, TOOL in VERSION, read SOURCE as it is compiled in BUILD_FOLDER; whatever it says is an
# error.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/ToolVersion.cmake)
require_version(is_here)
if(NOT is_here)
    return()
endif()

execute_process(COMMAND ${TOOL} --quiet -p ${BUILD_FOLDER} ${SOURCE}
    OUTPUT_VARIABLE findings
    ERROR_VARIABLE summary
    RESULT_VARIABLE result)
if(NOT result EQUAL 0 OR NOT findings STREQUAL "")
    message("${findings}")
    message(FATAL_ERROR "clang-tidy ended with ${result}: ${summary}")
endif()
