# SPDX-License-Identifier: MIT

# Charts whose graphics are missing, poor or broken, and charts that run for a long time.
function(charts_add_graphics_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "FLAVOURS;SOURCES")
    charts_add_render_test(tst_${name}
        FLAVOURS ${arg_FLAVOURS}
        SOURCES graphics/tst_${name}.cpp ${arg_SOURCES}
        LIBRARIES charts_render_test_support)
    target_include_directories(tst_${name} PRIVATE ${CMAKE_CURRENT_LIST_DIR})
endfunction()

charts_add_graphics_test(damagedgraphics
    FLAVOURS core
    SOURCES
        graphics/DriverFaults.cpp
        graphics/DriverFaults.h
        graphics/FurnishedScene.cpp
        graphics/FurnishedScene.h)
charts_add_graphics_test(longpointer
    FLAVOURS core vulkan software
    SOURCES
        graphics/FurnishedScene.cpp
        graphics/FurnishedScene.h
        graphics/HeapUse.h)
charts_add_graphics_test(soak FLAVOURS core)
set_tests_properties(
    tst_longpointer.core tst_longpointer.vulkan tst_longpointer.software tst_soak.core
    PROPERTIES LABELS soak)

# Mesa grants the highest version of OpenGL ES to whoever asks for version 2, unless it is told not to.
add_test(NAME tst_damagedgraphics.es2 COMMAND tst_damagedgraphics)
_charts_test_properties(tst_damagedgraphics.es2
    QT_QPA_PLATFORM=xcb CHARTS_TEST_GRAPHICS=es2 MESA_GLES_VERSION_OVERRIDE=2.0)
