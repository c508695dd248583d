# SPDX-License-Identifier: MIT

# Windows, scene graphs and graphics contexts that come and go while charts live.
find_package(Qt6 6.4 REQUIRED COMPONENTS QuickWidgets)
# Qt's platform plugin needs it, and so do its development files.
find_library(CHARTS_XCB_LIBRARY xcb REQUIRED)

add_library(charts_lives_support STATIC EXCLUDE_FROM_ALL
    lives/FrameWatch.cpp
    lives/FrameWatch.h
    lives/HideAndWait.cpp
    lives/HideAndWait.h
    lives/LivingScene.cpp
    lives/LivingScene.h
    lives/LossStage.h
    lives/OffscreenWindow.cpp
    lives/OffscreenWindow.h)
target_include_directories(charts_lives_support PUBLIC lives ${CMAKE_CURRENT_LIST_DIR})
target_link_libraries(charts_lives_support PUBLIC
    charts_render_test_support ${CHARTS_XCB_LIBRARY})

function(charts_add_lives_test name)
    charts_add_render_test(tst_${name}
        FLAVOURS core
        SOURCES lives/tst_${name}.cpp
        LIBRARIES charts_lives_support ${ARGN})
    set_tests_properties(tst_${name}.core PROPERTIES LABELS soak)
endfunction()

charts_add_lives_test(windowlives)
charts_add_lives_test(contextloss)
charts_add_lives_test(embeddedlives Qt6::QuickWidgets)
# Qt's headers for tests read differently where there are widgets.
set_target_properties(tst_embeddedlives PROPERTIES DISABLE_PRECOMPILE_HEADERS ON)

# The scene graph on the GUI thread.
charts_add_render_variant(windowlives core basicloop QSG_RENDER_LOOP=basic)
set_tests_properties(tst_windowlives.core.basicloop PROPERTIES LABELS soak)
