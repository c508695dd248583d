# SPDX-License-Identifier: MIT

# write_all_headers(include_folder file): writes a file that includes each header of the package.
function(write_all_headers include_folder file)
    file(GLOB headers LIST_DIRECTORIES false RELATIVE ${include_folder}
        ${include_folder}/ChartsLibrary/*)
    if(NOT headers)
        message(FATAL_ERROR "no headers in ${include_folder}/ChartsLibrary")
    endif()
    list(TRANSFORM headers REPLACE "(.+)" "#include <\\1>\n")
    list(JOIN headers "" text)
    file(WRITE ${file} "${text}")
endfunction()
