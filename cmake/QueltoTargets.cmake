# SPDX-License-Identifier: GPL-3.0-or-later
# One folder is one target. These functions give every target the same warnings, sanitizers and precompiled header.

set(QUELTO_WINDOW_TEST_SHARDS 4 CACHE STRING "Sanitizer builds run one in this many tests of the window")
set(QUELTO_SANITIZE "" CACHE STRING "Sanitizers to build with, as in the compiler's option -fsanitize")
option(QUELTO_TIDY "Configure only, for clang-tidy" OFF)

add_library(quelto_warnings INTERFACE)
target_compile_options(
    quelto_warnings
    INTERFACE -Wall -Wextra -Wpedantic -Werror -Wconversion -Wno-sign-conversion -Wshadow -Wnon-virtual-dtor
              -Wold-style-cast -Woverloaded-virtual -Wcast-align -Wnull-dereference -Wno-missing-field-initializers
)
# A unity build includes source files like headers, so gcc warns about types with members from an unnamed namespace.
target_compile_options(quelto_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
if(QUELTO_SANITIZE)
    add_compile_options(-fsanitize=${QUELTO_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    add_link_options(-fsanitize=${QUELTO_SANITIZE})
    # These two checks cost much compile time. The address sanitizer reports most of what they find.
    if(QUELTO_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize=vptr,object-size)
    endif()
    # The sanitizers' checks cause false positives of these warnings in gcc.
    target_compile_options(
        quelto_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-null-dereference -Wno-maybe-uninitialized>
    )
endif()
target_compile_definitions(quelto_warnings INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)

# Test code is compiled without optimisation in every preset: this saves a quarter of its compile time.
add_library(quelto_optimisation_of_tests INTERFACE)
target_compile_options(quelto_optimisation_of_tests INTERFACE -O0)

# Programs and libraries share a precompiled header, so both need the same code model. CMake's own choice for programs
# is -fPIE.
add_compile_options(-fPIC)

# clang-tidy reads the common headers as text: it cannot use gcc's precompiled ones. Warnings are gcc's task.
if(QUELTO_TIDY)
    add_compile_options("SHELL:-include ${CMAKE_SOURCE_DIR}/cmake/Precompiled.h" -w)
endif()

# Two precompiled headers, one for the program and one for its tests. Each is built once and shared by all targets.
function(quelto_precompiled_header name header)
    add_library(${name} STATIC ${CMAKE_SOURCE_DIR}/cmake/Precompiled.cpp)
    target_link_libraries(${name} PUBLIC Qt6::Core PRIVATE quelto_warnings ${ARGN})
    # By name instead of by path: ccache can then share the result between clones.
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/cmake)
    target_precompile_headers(${name} PRIVATE <${header}>)
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
endfunction()
quelto_precompiled_header(quelto_precompiled Precompiled.h)
quelto_precompiled_header(quelto_precompiled_for_tests PrecompiledForTests.h GTest::gmock quelto_optimisation_of_tests)

# quelto_library(name SOURCES a.cpp … LINK target … [PRIVATE_LINK target …])
function(quelto_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK;PRIVATE_LINK")
    quelto_check_layers(${name} ${arg_LINK} ${arg_PRIVATE_LINK})
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC Qt6::Core ${arg_LINK} PRIVATE quelto_warnings ${arg_PRIVATE_LINK})
    target_precompile_headers(${name} REUSE_FROM quelto_precompiled)
endfunction()

# quelto_program(name SOURCES a.cpp … LINK target … [PRECOMPILED target])
function(quelto_program name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "PRECOMPILED" "SOURCES;LINK")
    if(NOT arg_PRECOMPILED)
        set(arg_PRECOMPILED quelto_precompiled)
    endif()
    add_executable(${name} ${arg_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE Qt6::Core ${arg_LINK} quelto_warnings)
    target_precompile_headers(${name} REUSE_FROM ${arg_PRECOMPILED})
endfunction()

# quelto_test(name SOURCES … LINK …): a GoogleTest program with one ctest entry per test. With the address sanitizer it is
# one entry, because there a third of the time would go into starting processes.
# ISOLATED: each test needs a process of its own, also with that sanitizer, because it judges what a fresh process does.
# REALTIME: depends on real time, so a busy machine can fail it. The label lets ./check repeat it once.
# DESKTOP: runs on a private desktop (X server, session bus, PipeWire) that tools/private-desktop starts. The program is
# one ctest entry, because its tests share the desktop, and is REALTIME. DESKTOP_OPTIONS: options of the tool.
# WAYLAND: the same on a private Wayland desktop (tools/private-wayland).
# ALONE: no other test runs beside a DESKTOP program that judges every frame.
# PICTURES: tests of the window. Writes PNG files of the screens into the folder QUELTO_PICTURES. The program is one ctest
# entry: to start Qt for each test takes a third more time.
# MOC: defines classes with Q_OBJECT.
# Sanitizer builds leave out DESKTOP programs, and the thread sanitizer PICTURES programs, which mostly run Qt's threads.
# The address sanitizer runs each fourth test of a PICTURES program, because all of them take seven minutes;
# -DQUELTO_WINDOW_TEST_SHARDS=1 runs all.
function(quelto_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "ALONE;DESKTOP;WAYLAND;ISOLATED;PICTURES;MOC;REALTIME" "TIMEOUT" "DESKTOP_OPTIONS;SOURCES;LINK")
    if(NOT arg_TIMEOUT AND arg_PICTURES)
        set(arg_TIMEOUT 300)
    elseif(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 60)
    endif()
    quelto_program(
        ${name}
        SOURCES ${arg_SOURCES}
        LINK ${arg_LINK} GTest::gtest GTest::gmock GTest::gtest_main quelto_optimisation_of_tests quelto_sanitizer_suppressions
        PRECOMPILED quelto_precompiled_for_tests
    )
    # Most of the compile time of a test is spent on headers of GoogleTest and Qt.
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON)
    if(NOT arg_MOC)
        set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    endif()
    # QTRY_COMPARE of newer Qt versions converts a long to an int.
    if(Qt6_VERSION VERSION_GREATER_EQUAL 6.8)
        target_compile_options(${name} PRIVATE -Wno-error=conversion)
    endif()
    if(arg_PICTURES)
        target_compile_definitions(${name} PRIVATE QUELTO_PICTURES="${CMAKE_BINARY_DIR}/pictures")
        target_link_libraries(${name} PRIVATE quelto_sanitizer_options_of_window_tests)
    endif()
    set(command "")
    set(labels "")
    if(arg_DESKTOP)
        set(command ${CMAKE_SOURCE_DIR}/tools/private-desktop ${arg_DESKTOP_OPTIONS} $<TARGET_FILE:${name}>)
        set(labels desktop realtime)
    elseif(arg_WAYLAND)
        set(command ${CMAKE_SOURCE_DIR}/tools/private-wayland ${arg_DESKTOP_OPTIONS} $<TARGET_FILE:${name}>)
        set(labels desktop realtime)
    elseif(arg_PICTURES)
        set(command ${name})
        set(labels pictures)
    elseif(arg_REALTIME)
        set(labels realtime)
    endif()
    if(QUELTO_SANITIZE MATCHES "address" AND NOT command AND NOT arg_ISOLATED)
        set(command ${name})
        set(arg_TIMEOUT 600)
    endif()
    if((QUELTO_SANITIZE AND (arg_DESKTOP OR arg_WAYLAND)) OR (QUELTO_SANITIZE MATCHES "thread" AND arg_PICTURES))
        set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON)
    elseif(command)
        add_test(NAME ${name} COMMAND ${command})
        # ctest starts tests with high costs first.
        set_tests_properties(
            ${name} PROPERTIES TIMEOUT ${arg_TIMEOUT} LABELS "${labels}" COST 100 RUN_SERIAL "${arg_ALONE}"
        )
        if(QUELTO_SANITIZE AND arg_PICTURES)
            set_tests_properties(
                ${name} PROPERTIES ENVIRONMENT "GTEST_TOTAL_SHARDS=${QUELTO_WINDOW_TEST_SHARDS};GTEST_SHARD_INDEX=0"
            )
        endif()
    else()
        # gtest_discover_tests cannot pass on more than one label.
        include(GoogleTest)
        gtest_discover_tests(
            ${name} NO_PRETTY_VALUES DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT ${arg_TIMEOUT} LABELS "${labels}"
        )
    endif()
endfunction()

# quelto_qml_module(target URI name IMPORTS Other.Module … SOURCES registered.h … QML_FILES A.qml …): makes a library a
# QML module too. Code that Qt generates is compiled without warnings. Sanitizer builds leave out the code generated from
# QML files, which sanitizers need not judge, and interpret the files instead.
function(quelto_qml_module target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "URI" "IMPORTS;SOURCES;QML_FILES")
    string(REPLACE "." "/" folder ${arg_URI})
    if(QUELTO_SANITIZE OR QUELTO_TIDY)
        set(no_cache NO_CACHEGEN)
    endif()
    qt_add_qml_module(
        ${target}
        URI ${arg_URI}
        VERSION 1.0
        RESOURCE_PREFIX /
        ${no_cache}
        OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/${folder}
        IMPORT_PATH ${CMAKE_BINARY_DIR}/qml
        IMPORTS QtQuick ${arg_IMPORTS}
        SOURCES ${arg_SOURCES}
        QML_FILES ${arg_QML_FILES}
    )
    get_target_property(sources ${target} SOURCES)
    set(compiled_qml ${sources})
    list(FILTER compiled_qml INCLUDE REGEX "/qmlcache/.*_qml\\.cpp$")
    if(compiled_qml)
        list(REMOVE_ITEM sources ${compiled_qml})
        set_property(TARGET ${target} PROPERTY SOURCES ${sources})
        # Every one of these files includes the same large headers.
        add_library(${target}_compiled_qml STATIC ${compiled_qml})
        set_target_properties(${target}_compiled_qml PROPERTIES AUTOMOC OFF UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 16)
        target_compile_options(${target}_compiled_qml PRIVATE -w)
        target_link_libraries(${target}_compiled_qml PRIVATE Qt6::Qml)
        # Not a dependency of the target itself: these files are made after the target's list of types.
        target_link_libraries(${target} INTERFACE ${target}_compiled_qml)
    endif()
    list(FILTER sources INCLUDE REGEX "qmlcache|_qmltyperegistrations")
    set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -w)
    foreach(generated IN ITEMS ${target}_qmlcache ${target}plugin)
        if(TARGET ${generated})
            target_compile_options(${generated} PRIVATE -w)
        endif()
    endforeach()
endfunction()

# Runs a DESKTOP test of video a second time, because each renderer of Qt draws the video in its own way: first with
# OpenGL, then in software. Sanitizer builds have no DESKTOP tests.
function(quelto_test_both_renderers name)
    if(QUELTO_SANITIZE)
        return()
    endif()
    get_test_property(${name} LABELS labels)
    set_tests_properties(${name} PROPERTIES ENVIRONMENT QSG_RHI_BACKEND=opengl)
    add_test(NAME ${name}_in_software COMMAND ${CMAKE_SOURCE_DIR}/tools/private-desktop $<TARGET_FILE:${name}>)
    set_tests_properties(
        ${name}_in_software
        PROPERTIES ENVIRONMENT QT_QUICK_BACKEND=software LABELS "${labels}" TIMEOUT 120 COST 100
    )
endfunction()
