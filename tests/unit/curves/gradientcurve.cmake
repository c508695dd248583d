# SPDX-License-Identifier: MIT
charts_add_test(tst_fillrectprovider
    SOURCES tst_fillrectprovider.cpp
    LIBRARIES charts_test_support)
charts_add_test(tst_gradientcurve_qml
    SOURCES tst_gradientcurve_qml.cpp
    LIBRARIES charts_test_support)
foreach(test IN ITEMS tst_gradientcurve tst_gradientcurve_fill tst_gradientcurve_hits)
    charts_add_test(${test}
        SOURCES ${test}.cpp PaintedCurve.h RecordingProvider.h
        LIBRARIES charts_test_support)
    # The readers of vertices.
    target_include_directories(${test} PRIVATE ../nodes)
endforeach()

target_sources(tst_gradientcurve_fill PRIVATE
    ../nodes/DirtyMarks.cpp ../nodes/DirtyMarks.h ../nodes/FillVertices.h)
# The test defines this function of Qt's itself; the library has to find it instead.
target_link_options(tst_gradientcurve_fill PRIVATE
    LINKER:--export-dynamic-symbol=_ZN7QSGNode9markDirty*)
