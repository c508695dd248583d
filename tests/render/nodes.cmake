# SPDX-License-Identifier: MIT
charts_add_render_test(tst_smoothline
    FLAVOURS ${opengl_flavours} vulkan
    SOURCES tst_smoothline.cpp LinesItem.h
    LIBRARIES charts_render_test_support)
charts_add_opengl_test(smoothlinecalls)
