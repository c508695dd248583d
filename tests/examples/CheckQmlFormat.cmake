# SPDX-License-Identifier: MIT
# Fails and says where, when qmlformat would write a document in another way. Takes QMLFORMAT,
# DOCUMENTS (patterns) and WORK_FOLDER.
cmake_minimum_required(VERSION 3.25)

file(GLOB documents LIST_DIRECTORIES false ${DOCUMENTS})
if(NOT documents)
    message(FATAL_ERROR "No documents: ${DOCUMENTS}")
endif()
file(MAKE_DIRECTORY ${WORK_FOLDER})
foreach(document IN LISTS documents)
    get_filename_component(name ${document} NAME)
    file(READ ${document} text)
    # qmlformat of Qt 6.4 drops the value of "pragma ComponentBehavior: Bound" and moves the line
    # behind a pragma: the part in front of the first import is not its.
    string(FIND "${text}" "\nimport " start)
    math(EXPR start "${start} + 1")
    string(SUBSTRING "${text}" ${start} -1 text)
    file(WRITE ${WORK_FOLDER}/${name} "${text}")
    execute_process(
        COMMAND ${QMLFORMAT} ${WORK_FOLDER}/${name}
        OUTPUT_VARIABLE formatted
        ERROR_VARIABLE errors
        RESULT_VARIABLE result)
    if(NOT result STREQUAL "0" OR NOT errors STREQUAL "")
        message(SEND_ERROR "${document}: qmlformat failed (${result}) ${errors}")
    elseif(NOT formatted STREQUAL text)
        file(WRITE ${WORK_FOLDER}/${name}.formatted "${formatted}")
        execute_process(COMMAND diff -u ${WORK_FOLDER}/${name} ${WORK_FOLDER}/${name}.formatted
            OUTPUT_VARIABLE difference)
        message(SEND_ERROR "${document}: qmlformat would change it\n${difference}")
    endif()
endforeach()
