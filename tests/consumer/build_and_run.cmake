# SPDX-License-Identifier: GPL-3.0-only
# Steps of the consumer test; see CMakeLists.txt for what is passed in.

function(step title)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${title} failed (${result}):\n${output}\n${errors}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

set(prefix "${WORK_DIR}/prefix")
set(program "${WORK_DIR}/build/three_cues")
file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}/build")

step("Installing" "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${WORK_DIR}/as-installed")

# What is installed has to work wherever it is moved to.
file(RENAME "${WORK_DIR}/as-installed" "${prefix}")

if(WAY STREQUAL "cmake")
    step("Configuring the application" "${CMAKE_COMMAND}" -G "${GENERATOR}" -S "${SOURCE_DIR}" -B "${WORK_DIR}/build"
        -D "CMAKE_PREFIX_PATH=${prefix}" -D "CMAKE_CXX_COMPILER=${CXX}" -D "CMAKE_CXX_FLAGS=${CXX_FLAGS}"
        -D CMAKE_BUILD_TYPE=Debug)
    step("Building the application" "${CMAKE_COMMAND}" --build "${WORK_DIR}/build")
else()
    set(ENV{PKG_CONFIG_PATH} "${prefix}/${LIBDIR}/pkgconfig")
    step("pkg-config" pkg-config --cflags --libs overmarks)
    separate_arguments(package UNIX_COMMAND "${output}")
    separate_arguments(flags UNIX_COMMAND "${CXX_FLAGS}")
    step("Compiling the application" "${CXX}" -std=c++20 ${flags} "${SOURCE_DIR}/main.cpp" -o "${program}" ${package}
        "-Wl,-rpath,${prefix}/${LIBDIR}")
endif()

step("Running the application" "${program}")
file(READ "${EXPECTED}" expected)
if(NOT output STREQUAL expected)
    message(FATAL_ERROR "The application printed\n${output}\ninstead of\n${expected}")
endif()

# The program and its libraries find each other in the moved tree too.
step("Running the installed program" "${prefix}/bin/overmarks" --version)
