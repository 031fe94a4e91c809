# SPDX-License-Identifier: GPL-3.0-or-later
# One folder is one target; these functions give every target the same warnings, sanitizers and precompiled header.

set(QUELTO_SANITIZE "" CACHE STRING "Sanitizers to build with, as the compiler's -fsanitize takes them")

add_library(quelto_warnings INTERFACE)
target_compile_options(
    quelto_warnings
    INTERFACE -Wall -Wextra -Wpedantic -Werror -Wconversion -Wno-sign-conversion -Wshadow -Wnon-virtual-dtor
              -Wold-style-cast -Woverloaded-virtual -Wcast-align -Wnull-dereference -Wno-missing-field-initializers
)
# A build of several source files at once makes headers of them, where a private part of an unnamed type looks odd.
if(CMAKE_UNITY_BUILD)
    target_compile_options(quelto_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()
if(QUELTO_SANITIZE)
    add_compile_options(-fsanitize=${QUELTO_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    add_link_options(-fsanitize=${QUELTO_SANITIZE})
    # The sanitizers' own checks make gcc's optimiser see null where there is none.
    target_compile_options(
        quelto_warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-null-dereference -Wno-maybe-uninitialized>
    )
endif()
target_compile_definitions(quelto_warnings INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII)

# Where sanitizers look at the tests too, optimising these takes twice as long as compiling them.
add_library(quelto_optimisation_of_tests INTERFACE)
if(QUELTO_SANITIZE)
    target_compile_options(quelto_optimisation_of_tests INTERFACE -O0)
endif()

# Programs and libraries share a precompiled header, so both need the same code model. CMake's own choice for programs
# is -fPIE.
add_compile_options(-fPIC)

# The precompiled headers, one for the program and one for its tests, each built once and shared.
function(quelto_precompiled_header name header)
    add_library(${name} STATIC ${CMAKE_SOURCE_DIR}/cmake/Precompiled.cpp)
    target_link_libraries(${name} PUBLIC Qt6::Core PRIVATE quelto_warnings ${ARGN})
    target_precompile_headers(${name} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/${header})
    set_target_properties(${name} PROPERTIES AUTOMOC OFF)
endfunction()
quelto_precompiled_header(quelto_precompiled Precompiled.h)
quelto_precompiled_header(quelto_precompiled_for_tests PrecompiledForTests.h GTest::gmock quelto_optimisation_of_tests)

# quelto_library(name SOURCES a.cpp … LINK target … [PRIVATE_LINK target …])
function(quelto_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK;PRIVATE_LINK")
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

# quelto_test(name SOURCES … LINK …): one GoogleTest program, one ctest entry for each test in it.
# DESKTOP: runs on the private desktop (X server, session bus, PipeWire) that tools/private-desktop starts;
# such tests share one desktop for the program, so the program is one ctest entry. It runs alone: sound and pictures keep time.
# PICTURES: draws screens and keeps them in the folder that QUELTO_PICTURES names.
# MOC: has classes with Q_OBJECT of its own.
function(quelto_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "DESKTOP;PICTURES;MOC" "TIMEOUT" "SOURCES;LINK")
    if(NOT arg_TIMEOUT)
        set(arg_TIMEOUT 60)
    endif()
    quelto_program(
        ${name}
        SOURCES ${arg_SOURCES}
        LINK ${arg_LINK} GTest::gtest GTest::gmock GTest::gtest_main quelto_optimisation_of_tests quelto_sanitizer_suppressions
        PRECOMPILED quelto_precompiled_for_tests
    )
    if(NOT arg_MOC)
        set_target_properties(${name} PROPERTIES AUTOMOC OFF)
    endif()
    if(arg_PICTURES)
        target_compile_definitions(${name} PRIVATE QUELTO_PICTURES="${CMAKE_BINARY_DIR}/pictures")
        set(labels LABELS pictures)
    endif()
    if(arg_DESKTOP)
        add_test(NAME ${name} COMMAND ${CMAKE_SOURCE_DIR}/tools/private-desktop $<TARGET_FILE:${name}>)
        set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_TIMEOUT} LABELS desktop RUN_SERIAL ON)
    else()
        include(GoogleTest)
        gtest_discover_tests(${name} NO_PRETTY_VALUES DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT ${arg_TIMEOUT} ${labels})
    endif()
endfunction()

# quelto_qml_module(target URI name IMPORTS Other.Module … SOURCES registered.h … QML_FILES A.qml …): turns a library into a QML module too.
# What Qt generates from the files is not ours to hold to our warnings.
function(quelto_qml_module target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "URI" "IMPORTS;SOURCES;QML_FILES")
    string(REPLACE "." "/" folder ${arg_URI})
    qt_add_qml_module(
        ${target}
        URI ${arg_URI}
        VERSION 1.0
        RESOURCE_PREFIX /
        OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/qml/${folder}
        IMPORT_PATH ${CMAKE_BINARY_DIR}/qml
        IMPORTS QtQuick ${arg_IMPORTS}
        SOURCES ${arg_SOURCES}
        QML_FILES ${arg_QML_FILES}
    )
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "qmlcache|_qmltyperegistrations")
    set_source_files_properties(${sources} PROPERTIES COMPILE_OPTIONS -w)
    foreach(generated IN ITEMS ${target}_qmlcache ${target}plugin)
        if(TARGET ${generated})
            target_compile_options(${generated} PRIVATE -w)
        endif()
    endforeach()
endfunction()
