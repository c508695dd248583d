# SPDX-License-Identifier: MIT
charts_add_test(tst_curvetransforms
    SOURCES tst_curvetransforms.cpp RelativeChanges.h
    LIBRARIES charts_test_support)
charts_add_test(tst_curvepoints
    SOURCES tst_curvepoints.cpp
    LIBRARIES charts_test_support)
charts_add_test(tst_curve
    SOURCES tst_curve.cpp RelativeChanges.h
    LIBRARIES charts_test_support)
charts_add_test(tst_curve_nodes
    SOURCES tst_curve_nodes.cpp PaintedCurve.h
    LIBRARIES charts_test_support)
charts_add_test(tst_curve_updates
    SOURCES tst_curve_updates.cpp PaintedCurve.h ../nodes/DirtyMarks.cpp ../nodes/DirtyMarks.h
    LIBRARIES charts_test_support)
# The test defines this function of Qt's itself; the library has to find it instead.
target_link_options(tst_curve_updates PRIVATE
    LINKER:--export-dynamic-symbol=_ZN7QSGNode9markDirty*)

foreach(test IN ITEMS tst_curvetransforms tst_curvepoints tst_curve)
    # Comparisons without a tolerance.
    target_include_directories(${test} PRIVATE ../domain)
endforeach()
foreach(test IN ITEMS tst_curve_nodes tst_curve_updates)
    # The reader of vertices.
    target_include_directories(${test} PRIVATE ../nodes)
endforeach()
