# SPDX-License-Identifier: GPL-3.0-only
include("${CMAKE_CURRENT_LIST_DIR}/steps.cmake")

set(prefix "${WORK_DIR}/prefix")
set(program "${WORK_DIR}/build/three_cues")
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}/build")
install_and_move("${prefix}")

if(WAY STREQUAL "cmake")
    build_application("${SOURCE_DIR}/examples/link" "${WORK_DIR}/build" "${prefix}")
else()
    compile_with_pkg_config(overmarks "${SOURCE_DIR}/examples/link/main.cpp" "${program}" "${prefix}")
endif()

step("Running the application" "${program}")
expect_output("${output}" "${TESTS}/three_cues.txt")

# The program and its libraries find each other in the moved tree too.
step("Running the installed program" "${prefix}/bin/overmarks" --version)
