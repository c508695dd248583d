# SPDX-License-Identifier: MIT
foreach(test IN ITEMS tst_circle tst_circle_clipping)
    charts_add_test(${test} SOURCES ${test}.cpp LIBRARIES charts_test_support)
endforeach()

foreach(test IN ITEMS tst_polargrid tst_smithgrid)
    charts_add_test(${test}
        SOURCES ${test}.cpp GridContract.h GridShapes.h PaintedGrid.h
        LIBRARIES charts_test_support)
endforeach()
foreach(test IN ITEMS tst_polargrid_shapes tst_smithoutlines tst_smithtextbook)
    charts_add_test(${test}
        SOURCES ${test}.cpp GridShapes.h PaintedGrid.h
        LIBRARIES charts_test_support)
endforeach()
charts_add_test(tst_smithgeometry
    SOURCES tst_smithgeometry.cpp GridShapes.h PaintedGrid.h SmithReference.cpp SmithReference.h
    LIBRARIES charts_test_support)

foreach(test IN ITEMS
        tst_polargrid tst_polargrid_shapes
        tst_smithgrid tst_smithgeometry tst_smithoutlines tst_smithtextbook)
    # The reader of vertices.
    target_include_directories(${test} PRIVATE ../nodes)
endforeach()
