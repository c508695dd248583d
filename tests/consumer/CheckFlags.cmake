# SPDX-License-Identifier: MIT
# How a project that links the package is compiled, by its COMPILE_COMMANDS: nothing of how the
# package itself is compiled, and nothing from FOREIGN_FOLDERS (separated by commas).
cmake_minimum_required(VERSION 3.25)

string(REPLACE "," ";" FOREIGN_FOLDERS "${FOREIGN_FOLDERS}")
file(READ ${COMPILE_COMMANDS} commands)
if(NOT commands MATCHES "main\\.cpp")
    message(FATAL_ERROR "no commands in ${COMPILE_COMMANDS}")
endif()
foreach(flag IN ITEMS
        -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -Wno-restrict
        -ffp-contract -fsanitize -fvisibility --coverage
        QT_NO_CAST QT_NO_KEYWORDS QT_NO_FOREACH QT_NO_URL_CAST QT_NO_NARROWING QT_DISABLE_DEPRECATED
        ChartsLibrary_EXPORTS
        ${FOREIGN_FOLDERS})
    string(FIND "${commands}" "${flag}" position)
    if(NOT position EQUAL -1)
        message(SEND_ERROR "a foreign project is compiled with ${flag}")
    endif()
endforeach()
# It did not say itself which language it is written in.
if(NOT commands MATCHES "-std=(c|gnu)\\+\\+(20|2a|23|2b|26)")
    message(SEND_ERROR "a foreign project is not compiled as C++20")
endif()
