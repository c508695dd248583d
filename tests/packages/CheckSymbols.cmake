# SPDX-License-Identifier: MIT
# Compares what LIBRARY exports, as NM tells, with LIST, or with -DUPDATE=ON writes LIST so.
#
# Compared are the demangled names of symbols that the library alone defines. Weak and unique ones stay
# out: they are copies of inline functions and templates, Qt's and the standard library's among them, and
# which of them a library carries depends on compiler and build type. So do marks of the linker and what
# AddressSanitizer and gcov add. One name may stand for several symbols: the two or three that a compiler
# makes of each constructor and destructor.
cmake_minimum_required(VERSION 3.25)

set(introduction "# SPDX-License-Identifier: MIT
# What libChartsLibrary.so exports; see CheckSymbols.cmake.
")
get_filename_component(name ${LIBRARY} NAME)

execute_process(COMMAND ${NM} -DC --defined-only --format=posix ${LIBRARY}
    OUTPUT_VARIABLE lines OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "\n" ";" lines "${lines}")
set(found)
foreach(line IN LISTS lines)
    if(line MATCHES "^(.+) [TDRB] [0-9a-f ]+$")
        list(APPEND found "${CMAKE_MATCH_1}")
    endif()
endforeach()
list(FILTER found EXCLUDE REGEX "^(_init|_fini|_edata|_end|__bss_start)$|^__odr_asan\\.|^__gcov_|^mangle_path$")
list(REMOVE_DUPLICATES found)
list(SORT found)
list(LENGTH found count)
if(count LESS 100)
    message(FATAL_ERROR "${name}: ${count} symbols found, something is wrong with it or with ${NM}")
endif()

if(UPDATE)
    list(JOIN found "\n" text)
    file(WRITE ${LIST} "${introduction}${text}\n")
    message("${LIST}: ${count} symbols")
    return()
endif()

file(STRINGS ${LIST} expected)
list(FILTER expected EXCLUDE REGEX "^#")
set(gone ${expected})
list(REMOVE_ITEM gone ${found})
set(new ${found})
list(REMOVE_ITEM new ${expected})
foreach(symbol IN LISTS gone)
    message("${name} no longer exports ${symbol}")
endforeach()
foreach(symbol IN LISTS new)
    message("${name} exports something new: ${symbol}")
endforeach()
if(gone)
    message("Programs that use what is gone need a library with another SOVERSION.")
endif()
if(gone OR new)
    message("If it is meant so: cmake -DUPDATE=ON -DNM=${NM} -DLIBRARY=${LIBRARY} -DLIST=${LIST} "
        "-P ${CMAKE_CURRENT_LIST_FILE}")
    message(FATAL_ERROR "${name} does not export what ${LIST} lists")
endif()
