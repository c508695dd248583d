# SPDX-License-Identifier: MIT
# Runs the program behind -- and fails when it does something else than expected: with ALIVE_FOR, to
# run for so many seconds until it is stopped, else to end by itself with EXPECTED_EXIT (default 0).
# It may print EXPECTED_LINE, on either stream, and nothing more.
cmake_minimum_required(VERSION 3.25)

set(command "")
set(is_command FALSE)
math(EXPR last "${CMAKE_ARGC} - 1")
foreach(i RANGE ${last})
    if(is_command)
        list(APPEND command "${CMAKE_ARGV${i}}")
    elseif(CMAKE_ARGV${i} STREQUAL "--")
        set(is_command TRUE)
    endif()
endforeach()

set(timeout "")
if(ALIVE_FOR)
    set(timeout TIMEOUT ${ALIVE_FOR})
    set(expected_result "Process terminated due to timeout")
elseif(DEFINED EXPECTED_EXIT)
    set(expected_result ${EXPECTED_EXIT})
else()
    set(expected_result 0)
endif()
execute_process(COMMAND ${command} ${timeout}
    OUTPUT_VARIABLE output
    ERROR_VARIABLE output
    RESULT_VARIABLE result)

if(NOT result STREQUAL expected_result)
    message(SEND_ERROR "result ${result} instead of ${expected_result}")
endif()
set(expected_output "")
if(EXPECTED_LINE)
    set(expected_output "${EXPECTED_LINE}\n")
endif()
if(NOT output STREQUAL expected_output)
    message(SEND_ERROR "printed\n${output}\ninstead of\n${expected_output}")
endif()
