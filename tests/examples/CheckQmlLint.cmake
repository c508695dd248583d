# SPDX-License-Identifier: MIT
# Fails when qmllint has something to say about the documents in MODULE_FOLDER. Takes also QMLLINT
# and IMPORT_PATHS.
cmake_minimum_required(VERSION 3.25)

file(GLOB documents LIST_DIRECTORIES false ${MODULE_FOLDER}/*.qml)
if(NOT documents)
    message(FATAL_ERROR "No documents in ${MODULE_FOLDER}")
endif()
list(TRANSFORM IMPORT_PATHS PREPEND -I)
execute_process(
    COMMAND ${QMLLINT} --bare ${IMPORT_PATHS} ${documents}
    OUTPUT_VARIABLE output
    ERROR_VARIABLE output
    RESULT_VARIABLE result)
if(NOT result STREQUAL "0" OR NOT output STREQUAL "")
    message(FATAL_ERROR "qmllint (${result})\n${output}")
endif()
