# SPDX-License-Identifier: GPL-3.0-only
# Warnings are errors in our own code; what is generated or installed is left alone.

add_library(overmarks_warnings INTERFACE)
target_compile_options(overmarks_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast
    -Wcast-qual -Wextra-semi -Wimplicit-fallthrough -Wsuggest-override -Wundef -Wvla -Werror
    $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>) # gcc doesn't count it among -Wconversion
