# SPDX-License-Identifier: GPL-3.0-only
# A program that is linked already asks for the libraries by this name (docs/abi.md): the first two numbers of the version as long
# as the first is 0, the first alone from then on.
include("${CMAKE_CURRENT_LIST_DIR}/steps.cmake")

file(STRINGS "${SOURCE_DIR}/VERSION" version LIMIT_COUNT 1)
string(REGEX REPLACE "^(0\\.[0-9]+|[1-9][0-9]*).*" "\\1" interface "${version}")
step("Reading the library" readelf --dynamic --wide "${BUILD_DIR}/lib/lib${LIBRARY}.so")
if(NOT output MATCHES "Library soname: \\[lib${LIBRARY}\\.so\\.([0-9.]+)\\]" OR NOT CMAKE_MATCH_1 STREQUAL interface)
    message(FATAL_ERROR "lib${LIBRARY}.so of version ${version} should be asked for as lib${LIBRARY}.so.${interface}, and is as "
        "${CMAKE_MATCH_1}")
endif()
