# SPDX-License-Identifier: MIT
charts_add_render_test(tst_randomwalk
    FLAVOURS core
    SOURCES
        tst_randomwalk.cpp
        walk/ModelChart.cpp
        walk/ModelChart.h
        walk/ModelDomain.cpp
        walk/ModelDomain.h
        walk/ModelPointer.cpp
        walk/ModelPointer.h
        walk/ModelRenderer.cpp
        walk/ModelRenderer.h
        walk/ModelTrace.cpp
        walk/ModelTrace.h
        walk/RandomWalk.cpp
        walk/RandomWalk.h
        walk/WalkData.h
        walk/WalkEdits.cpp
        walk/WalkGeometry.cpp
        walk/WalkGeometry.h
        walk/WalkMouse.cpp
        walk/WalkOperations.cpp
        walk/WalkStage.cpp
        walk/WalkStage.h
        walk/WalkTrace.h
    LIBRARIES charts_render_test_support)
set_tests_properties(tst_randomwalk.core PROPERTIES LABELS soak)
