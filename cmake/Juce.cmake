# SPDX-License-Identifier: GPL-3.0-only
# JUCE is compiled once, from the distribution's module sources, and its one copy lives in libZEP_Core.

set(OVERMARKS_JUCE_MODULES juce_core juce_data_structures juce_events juce_graphics juce_gui_basics
    juce_audio_basics juce_audio_devices)

# What every compilation that includes a JUCE header must agree upon. Without NDEBUG some of JUCE's classes gain members,
# so a program that is built for debugging must still see the layout that the library was built with.
set(OVERMARKS_JUCE_DEFINITIONS
    JUCE_GLOBAL_MODULE_SETTINGS_INCLUDED=1 NDEBUG=1 JUCE_CHECK_MEMORY_LEAKS=0
    JUCE_MODAL_LOOPS_PERMITTED=1 JUCE_WEB_BROWSER=0 JUCE_USE_CURL=0 JUCE_LOAD_CURL_SYMBOLS_LAZILY=0
    JUCE_USE_XSHM=0 JUCE_USE_XRENDER=0 JUCE_JACK=0 JUCE_DISPLAY_SPLASH_SCREEN=0
    JUCE_STRICT_REFCOUNTEDPOINTER=1 DONT_SET_USING_JUCE_NAMESPACE=1)
foreach(module IN LISTS OVERMARKS_JUCE_MODULES)
    list(APPEND OVERMARKS_JUCE_DEFINITIONS JUCE_MODULE_AVAILABLE_${module}=1)
endforeach()

add_library(overmarks_juce_headers INTERFACE)
target_include_directories(overmarks_juce_headers SYSTEM INTERFACE "${JUCE_MODULES_DIR}")
target_compile_definitions(overmarks_juce_headers INTERFACE ${OVERMARKS_JUCE_DEFINITIONS})

add_library(overmarks_juce OBJECT)
foreach(module IN LISTS OVERMARKS_JUCE_MODULES)
    target_sources(overmarks_juce PRIVATE "${JUCE_MODULES_DIR}/${module}/${module}.cpp")
endforeach()
target_link_libraries(overmarks_juce PRIVATE overmarks_juce_headers PkgConfig::JUCE_PLATFORM Threads::Threads)
# Foreign code: optimised whatever we build ourselves, and not warned about.
# Address checks stay on in it, since it is us who hand it the bytes of strangers; its own arithmetic is its makers' affair,
# and checking that too would take longer to compile than everything else together.
if(CMAKE_CXX_FLAGS MATCHES "-fsanitize=")
    target_compile_options(overmarks_juce PRIVATE -w -O1 -g0 -fno-sanitize=undefined)
else()
    target_compile_options(overmarks_juce PRIVATE -w -O2 -g0)
endif()
# Its own export marks don't compile with gcc on two deprecated classes, so all of it is visible.
set_target_properties(overmarks_juce PROPERTIES CXX_VISIBILITY_PRESET default VISIBILITY_INLINES_HIDDEN OFF)
