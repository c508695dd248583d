# SPDX-License-Identifier: MIT
# Writes the HTML documentation; any warning is an error.
#
#   cmake -DQDOC=... -DPYTHON=... -DCONFIGURATION=... -DHEADERS=... -DWORK_DIR=... -DHTML_DIR=...
#         -P BuildDocs.cmake

file(STRINGS ${HEADERS} headers)
execute_process(
    COMMAND ${PYTHON} ${CMAKE_CURRENT_LIST_DIR}/headers_to_qdoc.py ${WORK_DIR} ${headers}
    RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "Some of what the headers declare is not documented, see above.")
endif()

file(REMOVE_RECURSE ${WORK_DIR}/quoted)
foreach(folder IN ITEMS examples tests/docs)
    cmake_path(GET folder PARENT_PATH parent)
    file(COPY ${CMAKE_CURRENT_LIST_DIR}/../../${folder} DESTINATION ${WORK_DIR}/quoted/${parent})
endforeach()

# What was not written this time must not be left from the time before.
file(REMOVE_RECURSE ${HTML_DIR})
file(MAKE_DIRECTORY ${HTML_DIR})
# It looks there for documentation of Qt, of which none is needed.
set(ENV{QT_INSTALL_DOCS} ${WORK_DIR})
execute_process(
    COMMAND ${QDOC} ${CONFIGURATION}
    RESULT_VARIABLE result
    OUTPUT_VARIABLE output
    ERROR_VARIABLE output)
string(REGEX REPLACE "(^|\n)qt\\.qdoc: [^\n]*" "" output "${output}")
string(STRIP "${output}" output)
# The exit status is the number of warnings, which may be a multiple of 256.
if(NOT result EQUAL 0 OR output MATCHES "warning:|error:")
    message(FATAL_ERROR "${output}\nThe documentation is not complete, see above.")
endif()

foreach(page IN ITEMS index.html qml-zel-charts-chart.html charts-tracedata.html)
    if(NOT EXISTS ${HTML_DIR}/${page})
        message(FATAL_ERROR "QDoc has not written ${page}.")
    endif()
endforeach()
