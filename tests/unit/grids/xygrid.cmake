# SPDX-License-Identifier: MIT
foreach(test IN ITEMS tst_abstractgrid tst_xygrid)
    charts_add_test(${test}
        SOURCES ${test}.cpp LabelText.h
        LIBRARIES charts_test_support)
    target_include_directories(${test} PRIVATE ../domain)
endforeach()

foreach(test IN ITEMS tst_xygrid_labels tst_xygrid_lines tst_xygrid_log tst_xygrid_extremes)
    charts_add_test(${test}
        SOURCES ${test}.cpp GridLines.h LabelText.h
        LIBRARIES charts_test_support)
endforeach()

charts_add_test(tst_xygrid_qml
    SOURCES tst_xygrid_qml.cpp GridContract.h GridShapes.h PaintedGrid.h
    LIBRARIES charts_test_support)
target_include_directories(tst_xygrid_qml PRIVATE ../nodes)

charts_add_test(tst_xygrid_nodes
    SOURCES tst_xygrid_nodes.cpp GridContract.h GridShapes.h PaintedGrid.h
        ../nodes/DirtyMarks.cpp ../nodes/DirtyMarks.h
    LIBRARIES charts_test_support)
target_include_directories(tst_xygrid_nodes PRIVATE ../nodes)
# The test defines this function of Qt's itself; the library has to find it instead.
target_link_options(tst_xygrid_nodes PRIVATE LINKER:--export-dynamic-symbol=_ZN7QSGNode9markDirty*)
