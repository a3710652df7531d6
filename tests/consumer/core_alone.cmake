# SPDX-License-Identifier: GPL-3.0-only
# Overmarks::Core and overmarks-core are enough for a program that needs no more.
include("${CMAKE_CURRENT_LIST_DIR}/steps.cmake")

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
install_and_move("${WORK_DIR}/prefix")
build_application("${TESTS}/core_alone" "${WORK_DIR}/build" "${WORK_DIR}/prefix")
compile_with_pkg_config(overmarks-core "${TESTS}/core_alone/main.cpp" "${WORK_DIR}/core_alone" "${WORK_DIR}/prefix")

foreach(program IN ITEMS "${WORK_DIR}/build/core_alone" "${WORK_DIR}/core_alone")
    step("Running ${program}" "${program}")
    if(NOT output STREQUAL "01:01:00;02\n")
        message(FATAL_ERROR "${program} printed ${output}")
    endif()
    step("Reading ${program}" readelf --dynamic --wide "${program}")
    if(NOT output MATCHES "libZEP_Core" OR output MATCHES "libZEP_Overmarks|libZEP_MIDIIO")
        message(FATAL_ERROR "${program} needs\n${output}")
    endif()
endforeach()
