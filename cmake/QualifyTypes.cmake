# SPDX-License-Identifier: MIT
# Completes a type description that Qt has written: names of this library's types get their namespace
# where the header that they stand in leaves it out, and classes derived from others of them their base.
# Does nothing to a description that is complete.
#
#   cmake -DFILE=ChartsLibrary.qmltypes -P QualifyTypes.cmake

file(READ ${FILE} text)
set(original "${text}")

foreach(type AbstractCurveTransform Span TraceDomain TraceFormat GridLayoutMode ZoomType)
    set(qualified ${type})
    if(type STREQUAL "TraceFormat")
        set(qualified TraceDomain::TraceFormat)
    elseif(type STREQUAL "GridLayoutMode")
        set(qualified XYGrid::GridLayoutMode)
    elseif(type STREQUAL "ZoomType")
        set(qualified ZoomDelegate::ZoomType)
    endif()
    string(REPLACE "type: \"${type}\"" "type: \"Charts::${qualified}\"" text "${text}")
    string(REPLACE "type: \"${qualified}\"" "type: \"Charts::${qualified}\"" text "${text}")
endforeach()

foreach(class IN ITEMS Chart=ChartItem AbstractGrid=ChartItem
        PolarGrid=AbstractGrid SmithGrid=AbstractGrid XYGrid=AbstractGrid
        Curve=ChartItem GradientCurve=Curve FillRectProvider=GradientProvider
        LinearCurveTransform=AbstractCurveTransform LogarithmicCurveTransform=AbstractCurveTransform)
    string(REGEX MATCH "^([^=]+)=(.+)$" class ${class})
    set(base ${CMAKE_MATCH_2})
    set(class ${CMAKE_MATCH_1})
    string(REPLACE
        "name: \"Charts::${class}\"\n        accessSemantics: \"reference\"\n        exports:"
        "name: \"Charts::${class}\"\n        accessSemantics: \"reference\"\n        prototype: \"Charts::${base}\"\n        exports:"
        text "${text}")
endforeach()

if(NOT text STREQUAL original)
    file(WRITE ${FILE} "${text}")
endif()
