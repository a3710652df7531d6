# SPDX-License-Identifier: GPL-3.0-only
# EXAMPLE.txt tells what the example prints; below a line "files:" the names of what it writes.
include("${CMAKE_CURRENT_LIST_DIR}/steps.cmake")

set(folder "${WORK_DIR}/written/${EXAMPLE}")
file(REMOVE_RECURSE "${folder}")
file(MAKE_DIRECTORY "${folder}")

unset(ENV{DISPLAY}) # none of them needs one
# The framework's cache of typefaces lasts as long as the process (tests/support/LeakSuppressions.cpp).
set(ENV{LSAN_OPTIONS} "suppressions=${TESTS}/leaks.txt:print_suppressions=0")
step("Running ${EXAMPLE}" "${WORK_DIR}/build/${EXAMPLE}"
    "${WORK_DIR}/prefix/share/overmarks/examples/data/harbour-lights-reel-2.csv" "${folder}")

set(WORK_DIR "${folder}-printed") # of its own, since the examples run side by side
file(GLOB written RELATIVE "${folder}" "${folder}/*")
string(APPEND output "files:\n")
foreach(name IN LISTS written)
    file(SIZE "${folder}/${name}" size)
    if(size EQUAL 0)
        message(FATAL_ERROR "${EXAMPLE} has written nothing to ${name}")
    endif()
    string(APPEND output "${name}\n")
endforeach()
expect_output("${output}" "${TESTS}/examples/${EXAMPLE}.txt")
