# SPDX-License-Identifier: MIT
# Checks that each code block of a document which names its source is that file to the letter (its
# licence line left out), and with -DUPDATE=ON writes it so. A quote stands behind a line
# "<!-- quoted: PATH -->".
#
#   cmake -DROOT=... -DDOCUMENT=README.md [-DUPDATE=ON] -P check_quotes.cmake

file(READ ${ROOT}/${DOCUMENT} text)
# Semicolons and brackets would be taken for list syntax.
set(rest "${text}")
set(result "")
set(count 0)
while(rest MATCHES "<!-- quoted: ([^ ]+) -->\n```([a-z]+)\n")
    set(marker "${CMAKE_MATCH_0}")
    set(source ${CMAKE_MATCH_1})
    string(FIND "${rest}" "${marker}" start)
    string(LENGTH "${marker}" length)
    math(EXPR start "${start} + ${length}")
    string(SUBSTRING "${rest}" 0 ${start} head)
    string(SUBSTRING "${rest}" ${start} -1 rest)
    string(FIND "${rest}" "```" end)
    string(SUBSTRING "${rest}" 0 ${end} quote)
    string(SUBSTRING "${rest}" ${end} -1 rest)

    file(READ ${ROOT}/${source} original)
    string(REGEX REPLACE "^// SPDX[^\n]*\n" "" original "${original}")
    if(NOT quote STREQUAL original AND NOT UPDATE)
        message(FATAL_ERROR "${DOCUMENT}: the quote of ${source} is not what the file says")
    endif()
    string(APPEND result "${head}${original}")
    math(EXPR count "${count} + 1")
endwhile()
if(count EQUAL 0)
    message(FATAL_ERROR "${DOCUMENT}: quotes no file")
endif()
if(UPDATE)
    file(WRITE ${ROOT}/${DOCUMENT} "${result}${rest}")
endif()
