# SPDX-License-Identifier: MIT

# Qt wants a private folder for sockets; a machine without a session has none.
set(charts_runtime_dir ${PROJECT_BINARY_DIR}/runtime)
file(MAKE_DIRECTORY ${charts_runtime_dir})
file(CHMOD ${charts_runtime_dir} PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

set(CHARTS_TEST_ENVIRONMENT
    XDG_RUNTIME_DIR=${charts_runtime_dir}
    # Uninstrumented third-party code only; see the comments in the files.
    LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/lsan.supp:print_suppressions=0
    UBSAN_OPTIONS=print_stacktrace=1
    # No mutex is ours, and of those of others not every use is seen.
    TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/support/tsan.supp:print_suppressions=0:detect_deadlocks=0:report_mutex_bugs=0:report_destroy_locked=0
    QML_IMPORT_PATH=${PROJECT_BINARY_DIR}/qml
    QT_QUICK_CONTROLS_STYLE=Basic
    # A document compiled against the types of another build must not be taken from the cache.
    QML_DISABLE_DISK_CACHE=1
    LC_ALL=C.UTF-8)

# Function names and lines are enough to find what failed, and take a fifth less time to build.
set(charts_test_compile_options $<$<CONFIG:Debug>:-g1>)

# The headers that are compiled once for all tests, below, belong to an object library, which CMake
# compiles with -fPIC, but programs with -fPIE: the compiler wants one way. Qt before 6.5 demands -fPIC.
get_target_property(charts_qt_compile_options Qt6::Core INTERFACE_COMPILE_OPTIONS)
if(NOT "-fPIC" IN_LIST charts_qt_compile_options)
    list(APPEND charts_test_compile_options -fPIC)
endif()
if(Qt6_VERSION VERSION_GREATER_EQUAL 6.8)
    # QTRY_VERIFY and its like hold a conversion that this warning objects to. The tests' own are found
    # with older versions.
    list(APPEND charts_test_compile_options -Wno-conversion)
endif()

# Links in half the time of GNU ld; newer distributions may not have it.
include(CheckLinkerFlag)
check_linker_flag(CXX -fuse-ld=gold CHARTS_HAVE_GOLD)
set(charts_test_link_options $<$<BOOL:${CHARTS_HAVE_GOLD}>:-fuse-ld=gold>)

# Half of the time that a test takes to compile goes into Qt's headers. They are compiled once for all
# tests, which needs the same definitions everywhere: Qt's own one of each test's folder serves only
# to find data files, which these tests do not have. Only these headers: templates of theirs are
# instantiated in each source again, those of all of QtTest and QtCore would take longer than most
# tests themselves.
get_target_property(charts_qttest_definitions Qt6::Test INTERFACE_COMPILE_DEFINITIONS)
list(FILTER charts_qttest_definitions EXCLUDE REGEX QT_TESTCASE_)
set_target_properties(Qt6::Test PROPERTIES
    INTERFACE_COMPILE_DEFINITIONS "${charts_qttest_definitions}")
add_library(charts_test_headers OBJECT EXCLUDE_FROM_ALL
    ${CMAKE_CURRENT_LIST_DIR}/support/PrecompiledHeaders.cpp)
target_link_libraries(charts_test_headers PRIVATE Charts::ChartsLibrary Qt6::Test)
target_compile_options(charts_test_headers PRIVATE ${charts_test_compile_options})
target_compile_definitions(charts_test_headers PRIVATE
    CHARTS_SHARED_DATA_DIR="${CHARTS_SHARED_DATA_DIR}")
target_precompile_headers(charts_test_headers PRIVATE
    <QtCore/QRegularExpression> <QtQuick/QQuickItem> <QtQuick/QQuickWindow>
    <QtTest/QSignalSpy> <QtTest/QTest>)
set_target_properties(charts_test_headers PROPERTIES AUTOMOC OFF)

# Meta objects of the sources that define some. Automoc starts four processes for each program, this
# only one for each source. Looked up when the build is configured: configure again after adding one.
function(_charts_test_meta_objects name)
    foreach(source IN LISTS ARGN)
        cmake_path(GET source STEM stem)
        cmake_path(ABSOLUTE_PATH source)
        file(STRINGS ${source} included REGEX "^#include \"${stem}\\.moc\"")
        file(STRINGS ${source} marked REGEX "^ *Q_(OBJECT|GADGET)")
        if(included)
            qt_generate_moc(${source} ${CMAKE_CURRENT_BINARY_DIR}/${stem}.moc TARGET ${name})
            set_property(SOURCE ${source} APPEND PROPERTY
                OBJECT_DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/${stem}.moc)
        elseif(marked)
            set(moc_source ${CMAKE_CURRENT_BINARY_DIR}/moc_${name}_${stem}.cpp)
            qt_generate_moc(${source} ${moc_source} TARGET ${name})
            target_sources(${name} PRIVATE ${moc_source})
        endif()
    endforeach()
endfunction()

function(_charts_test_executable name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE Qt6::Test ${arg_LIBRARIES})
    target_compile_options(${name} PRIVATE ${charts_test_compile_options})
    target_link_options(${name} PRIVATE ${charts_test_link_options})
    target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    _charts_test_meta_objects(${name} ${arg_SOURCES})
    if("${arg_LIBRARIES}" MATCHES "Charts::ChartsLibrary|_test_support|gallery_"
            AND NOT "${arg_LIBRARIES}" MATCHES "QuickTest")
        target_precompile_headers(${name} REUSE_FROM charts_test_headers)
    endif()
    target_compile_definitions(${name} PRIVATE
        CHARTS_SHARED_DATA_DIR="${CHARTS_SHARED_DATA_DIR}")
endfunction()

function(_charts_test_properties test)
    set_tests_properties(${test} PROPERTIES
        TIMEOUT 300
        ENVIRONMENT "${CHARTS_TEST_ENVIRONMENT};${ARGN}")
endfunction()

# charts_add_test(name SOURCES ... [LIBRARIES ...] [ENVIRONMENT ...])
#
# A test that needs no display and no graphics.
function(charts_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;ENVIRONMENT")
    _charts_test_executable(${name} SOURCES ${arg_SOURCES} LIBRARIES ${arg_LIBRARIES})
    add_test(NAME ${name} COMMAND ${name})
    _charts_test_properties(${name} QT_QPA_PLATFORM=offscreen ${arg_ENVIRONMENT})
endfunction()

# charts_add_render_test(name FLAVOURS compat core es vulkan software
#                        SOURCES ... [LIBRARIES ...] [ENVIRONMENT ...])
#
# A test that draws in a real window, once for each flavour of graphics. The program reads the
# flavour from CHARTS_TEST_GRAPHICS; one that it cannot get is a failure.
function(charts_add_render_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "FLAVOURS;SOURCES;LIBRARIES;ENVIRONMENT")
    _charts_test_executable(${name} SOURCES ${arg_SOURCES} LIBRARIES ${arg_LIBRARIES})
    foreach(flavour IN LISTS arg_FLAVOURS)
        add_test(NAME ${name}.${flavour} COMMAND ${name})
        _charts_test_properties(${name}.${flavour}
            QT_QPA_PLATFORM=xcb CHARTS_TEST_GRAPHICS=${flavour} ${arg_ENVIRONMENT})
    endforeach()
endfunction()

set(opengl_flavours compat core es)

# charts_add_render_variant(name flavour variant ENVIRONMENT_VARIABLE=VALUE ...)
#
# The test tst_name once more, in another environment: the scene graph on the GUI thread, OpenGL by way
# of EGL, two device pixels for each pixel of an item.
function(charts_add_render_variant name flavour variant)
    add_test(NAME tst_${name}.${flavour}.${variant} COMMAND tst_${name})
    _charts_test_properties(tst_${name}.${flavour}.${variant}
        QT_QPA_PLATFORM=xcb CHARTS_TEST_GRAPHICS=${flavour} ${ARGN})
endfunction()
