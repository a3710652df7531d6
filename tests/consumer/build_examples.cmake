# SPDX-License-Identifier: GPL-3.0-only
include("${CMAKE_CURRENT_LIST_DIR}/steps.cmake")

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}")
install_and_move("${WORK_DIR}/prefix")
# From the installed sources: what is installed has to be whole.
build_application("${WORK_DIR}/prefix/share/overmarks/examples" "${WORK_DIR}/build" "${WORK_DIR}/prefix")

# An example that nobody runs would soon be wrong.
file(GLOB sources RELATIVE "${SOURCE_DIR}/examples" "${SOURCE_DIR}/examples/*.cpp")
foreach(source IN LISTS sources)
    get_filename_component(name "${source}" NAME_WE)
    if(NOT EXISTS "${TESTS}/examples/${name}.txt")
        message(FATAL_ERROR "tests/consumer/examples/${name}.txt is missing, which tells what examples/${source} prints")
    endif()
endforeach()
