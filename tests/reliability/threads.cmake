# SPDX-License-Identifier: MIT

# What runs on which thread, and who notices when something does not.
add_library(charts_threads_support STATIC EXCLUDE_FROM_ALL
    threads/ThreadWatch.h
    threads/WatchedScene.cpp
    threads/WatchedScene.h
    threads/WatchedTrace.cpp
    threads/WatchedTrace.h
    threads/WatchedWindow.cpp
    threads/WatchedWindow.h)
target_include_directories(charts_threads_support PUBLIC threads ${CMAKE_CURRENT_LIST_DIR})
target_link_libraries(charts_threads_support PUBLIC charts_render_test_support)

charts_add_render_test(tst_threads
    FLAVOURS core
    SOURCES threads/tst_threads.cpp
    LIBRARIES charts_threads_support)
set_tests_properties(tst_threads.core PROPERTIES LABELS soak)

# These calls are races: nothing for ThreadSanitizer.
if(NOT CHARTS_SANITIZERS MATCHES thread)
    charts_add_render_test(tst_threadchecks
        FLAVOURS core
        SOURCES
            threads/ThreadOperations.cpp
            threads/ThreadOperations.h
            threads/tst_threadchecks.cpp
        LIBRARIES charts_render_test_support)
endif()

# Races that are made on purpose: what is announced to ThreadSanitizer about Qt must not hide them.
if(CHARTS_SANITIZERS MATCHES thread)
    charts_add_render_test(tst_races
        SOURCES threads/tst_races.cpp
        LIBRARIES charts_threads_support)
    foreach(race besideThePool betweenTraces whileDrawing betweenWindows)
        add_test(NAME tst_races.${race} COMMAND tst_races ${race})
        _charts_test_properties(tst_races.${race} QT_QPA_PLATFORM=xcb CHARTS_TEST_GRAPHICS=core)
        set_tests_properties(tst_races.${race} PROPERTIES
            PASS_REGULAR_EXPRESSION "ThreadSanitizer: data race[^\n]* in ${race}Shared")
    endforeach()
endif()
