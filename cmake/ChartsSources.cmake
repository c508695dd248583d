# SPDX-License-Identifier: MIT

# charts_sources(PUBLIC_HEADERS ... PRIVATE ...)
#
# Adds the current folder's files to the library. A public header is installed, and offered to the
# rest of this build, as <ChartsLibrary/Name.h>.
function(charts_sources)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "" "PUBLIC_HEADERS;PRIVATE")
    list(TRANSFORM arg_PUBLIC_HEADERS PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    list(TRANSFORM arg_PRIVATE PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
    target_sources(ChartsLibrary PRIVATE ${arg_PUBLIC_HEADERS} ${arg_PRIVATE})
    # The generated type registration includes headers by their base name.
    target_include_directories(ChartsLibrary PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    set_property(TARGET ChartsLibrary APPEND PROPERTY CHARTS_PUBLIC_HEADERS ${arg_PUBLIC_HEADERS})
    foreach(header IN LISTS arg_PUBLIC_HEADERS)
        get_filename_component(name ${header} NAME)
        # A link, so that headers find each other as they do when installed, all in one folder.
        file(CREATE_LINK ${header} ${PROJECT_BINARY_DIR}/include/ChartsLibrary/${name} SYMBOLIC)
    endforeach()
endfunction()
