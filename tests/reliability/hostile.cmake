# SPDX-License-Identifier: MIT

# Data, counts, handlers and lifetimes that no sane application has.
function(charts_add_hostile_test name)
    charts_add_render_test(tst_${name}
        FLAVOURS core
        SOURCES hostile/tst_${name}.cpp ${ARGN}
        LIBRARIES charts_render_test_support)
    target_include_directories(tst_${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
endfunction()

charts_add_hostile_test(dangling hostile/FixedPlace.h)
charts_add_hostile_test(danglingcurves hostile/FixedPlace.h)
charts_add_hostile_test(hostiledata hostile/GlBounds.h)
charts_add_hostile_test(hostilecounts)
charts_add_hostile_test(hostilehandlers)
charts_add_hostile_test(hostilezoom hostile/FixedPlace.h)
charts_add_hostile_test(hostileqml hostile/FixedPlace.h hostile/HostileDocuments.h)
add_dependencies(tst_hostileqml ChartsLibraryplugin)

# Those with a long form.
foreach(name IN ITEMS hostiledata hostilecounts hostilehandlers hostileqml)
    set_tests_properties(tst_${name}.core PROPERTIES LABELS soak)
endforeach()
