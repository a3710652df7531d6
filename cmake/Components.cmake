# SPDX-License-Identifier: GPL-3.0-only
# One OBJECT library for each folder.
#
# Includes are written from the root of the sources ("event/Event.h"). Each folder gets an include root of its own
# in the build tree that holds a link to that folder and nothing else, so that a folder sees only what it names
# under DEPENDS: an include against the arrows doesn't compile.

set(OVERMARKS_INCLUDE_ROOTS "${CMAKE_BINARY_DIR}/include-roots")

# Headers that the configuration writes: export macros and versions.
set(OVERMARKS_GENERATED "${CMAKE_BINARY_DIR}/generated")

# overmarks_component(event SOURCES a.cpp ... DEPENDS core ... LINKS Poco::Foundation ... [PRIVATE_LINKS ...])
# With HEADERS a.h ... it is a part of a folder, of which others see these headers and nothing else.
function(overmarks_component name)
    cmake_parse_arguments(ARG "" "" "SOURCES;HEADERS;DEPENDS;LINKS;PRIVATE_LINKS" ${ARGN})

    set(root "${OVERMARKS_INCLUDE_ROOTS}/${name}")
    file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
    if(ARG_HEADERS)
        file(MAKE_DIRECTORY "${root}/${folder}")
        foreach(header IN LISTS ARG_HEADERS)
            file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}/${header}" "${root}/${folder}/${header}" SYMBOLIC)
        endforeach()
    else()
        file(MAKE_DIRECTORY "${root}")
        file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${root}/${folder}" SYMBOLIC)
    endif()

    add_library(overmarks_${name} OBJECT ${ARG_SOURCES})
    target_include_directories(overmarks_${name} PUBLIC "${root}" "${OVERMARKS_GENERATED}")
    target_link_libraries(overmarks_${name} PUBLIC ${ARG_LINKS} PRIVATE ${ARG_PRIVATE_LINKS} overmarks_warnings)

    foreach(dependency IN LISTS ARG_DEPENDS)
        target_link_libraries(overmarks_${name} PUBLIC overmarks_${dependency}_headers)
    endforeach()

    # What others need of this folder to compile against it: never its objects, which the shared library
    # and the tests pick up by name.
    add_library(overmarks_${name}_headers INTERFACE)
    target_include_directories(overmarks_${name}_headers INTERFACE "${root}" "${OVERMARKS_GENERATED}")
    target_link_libraries(overmarks_${name}_headers INTERFACE ${ARG_LINKS})
    foreach(dependency IN LISTS ARG_DEPENDS)
        target_link_libraries(overmarks_${name}_headers INTERFACE overmarks_${dependency}_headers)
    endforeach()

    overmarks_use_common_headers(overmarks_${name})
endfunction()

# clang refuses precompiled headers for a folder with threads if they were made without, so it is told of threads everywhere.
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
    set(OVERMARKS_THREAD_OPTION -pthread)
endif()

# The framework's headers take seconds to read; they are read once for all our folders.
function(overmarks_use_common_headers target)
    if(NOT TARGET overmarks_common_headers)
        add_library(overmarks_common_headers OBJECT "${PROJECT_SOURCE_DIR}/cmake/common_headers.cpp")
        target_link_libraries(overmarks_common_headers PRIVATE overmarks_juce_headers overmarks_warnings Poco::Foundation)
        target_precompile_headers(overmarks_common_headers PRIVATE ${OVERMARKS_COMMON_HEADERS})
        target_compile_options(overmarks_common_headers PRIVATE ${OVERMARKS_THREAD_OPTION})
    endif()
    target_compile_options(${target} PRIVATE ${OVERMARKS_THREAD_OPTION})
    target_precompile_headers(${target} REUSE_FROM overmarks_common_headers)
endfunction()

# The same for the tests, with the test framework. Under the sanitizers it is our code that is checked for undefined behaviour;
# the tests themselves, half of all sources, are checked for memory alone and not optimised, which takes a third of the time.
function(overmarks_use_test_headers target)
    if(NOT TARGET overmarks_test_headers)
        add_library(overmarks_test_headers OBJECT "${PROJECT_SOURCE_DIR}/cmake/common_headers.cpp")
        target_link_libraries(overmarks_test_headers
            PRIVATE overmarks_juce_headers overmarks_warnings Poco::Foundation GTest::gmock)
        target_precompile_headers(overmarks_test_headers PRIVATE
            ${OVERMARKS_COMMON_HEADERS} <gmock/gmock.h> <gtest/gtest.h>)
        target_compile_options(overmarks_test_headers PRIVATE ${OVERMARKS_TEST_OPTIONS})
    endif()
    target_compile_options(${target} PRIVATE ${OVERMARKS_TEST_OPTIONS})
    target_precompile_headers(${target} REUSE_FROM overmarks_test_headers)
endfunction()

if(CMAKE_CXX_FLAGS MATCHES "-fsanitize=[a-z,]*undefined" AND NOT OVERMARKS_BUILD_FUZZERS)
    set(OVERMARKS_TEST_OPTIONS -fno-sanitize=undefined -O0)
endif()

set(OVERMARKS_COMMON_HEADERS
    <juce_data_structures/juce_data_structures.h> <juce_graphics/juce_graphics.h>
    <Poco/Any.h> <Poco/Notification.h> <Poco/NotificationCenter.h>
    <algorithm> <functional> <map> <memory> <string> <vector>)
