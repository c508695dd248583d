# SPDX-License-Identifier: MIT
# How everything in this tree is compiled. Nothing of it reaches the users of the installed library.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

option(CHARTS_WARNINGS_AS_ERRORS "Treat compiler warnings as errors" OFF)
set(CHARTS_SANITIZERS "" CACHE STRING "Sanitizers to build with, e.g. address,undefined")

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 sees overlaps in every std::string assigned from a literal (GCC bug 105651).
    add_compile_options(-Wno-restrict)
endif()
if(CHARTS_WARNINGS_AS_ERRORS)
    add_compile_options(-Werror)
endif()

# Grid positions are compared to the last bit: a product and a sum may only be fused where the
# source says so.
add_compile_options(-ffp-contract=off)

if(CHARTS_SANITIZERS)
    add_compile_options(-fsanitize=${CHARTS_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${CHARTS_SANITIZERS})
endif()

add_compile_definitions(
    QT_NO_CAST_FROM_ASCII
    QT_NO_CAST_TO_ASCII
    QT_NO_KEYWORDS
    QT_NO_FOREACH
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_DISABLE_DEPRECATED_BEFORE=0x060400)
