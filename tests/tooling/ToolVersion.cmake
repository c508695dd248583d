# SPDX-License-Identifier: MIT

# require_version(result): whether TOOL is there in VERSION. If it is not, the line says so by which ctest
# knows that a test was skipped.
function(require_version result)
    set(${result} FALSE PARENT_SCOPE)
    if(NOT EXISTS "${TOOL}")
        message("Skipped: the tool, version ${VERSION}, is not installed")
        return()
    endif()
    execute_process(COMMAND ${TOOL} --version OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
    if(NOT text MATCHES "version ([0-9]+)\\.")
        message(FATAL_ERROR "${TOOL} does not tell its version: ${text}")
    endif()
    if(NOT CMAKE_MATCH_1 EQUAL VERSION)
        message("Skipped: ${TOOL} has version ${CMAKE_MATCH_1}, the sources follow version ${VERSION}")
        return()
    endif()
    set(${result} TRUE PARENT_SCOPE)
endfunction()
