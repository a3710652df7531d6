# SPDX-License-Identifier: GPL-3.0-only
# What the consumer tests share; see CMakeLists.txt for what is passed in.
cmake_minimum_required(VERSION 3.25)

# step(TITLE COMMAND...): runs a command, whose output is in `output` then, and ends the test if it fails.
function(step title)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${title} failed (${result}):\n${output}\n${errors}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# What is installed has to work wherever it is moved to.
function(install_and_move prefix)
    step("Installing" "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${prefix}-as-installed")
    file(RENAME "${prefix}-as-installed" "${prefix}")
endfunction()

# build_application(SOURCES BUILD_FOLDER PREFIX)
function(build_application sources folder prefix)
    step("Configuring" "${CMAKE_COMMAND}" -G "${GENERATOR}" -S "${sources}" -B "${folder}" "-DCMAKE_PREFIX_PATH=${prefix}"
        "-DCMAKE_CXX_COMPILER=${CXX}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}" "-DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}"
        -DCMAKE_BUILD_TYPE=Debug)
    step("Building" "${CMAKE_COMMAND}" --build "${folder}")
endfunction()

# compile_with_pkg_config(PACKAGE SOURCE PROGRAM PREFIX)
function(compile_with_pkg_config package source program prefix)
    set(ENV{PKG_CONFIG_PATH} "${prefix}/${LIBDIR}/pkgconfig")
    step("pkg-config" pkg-config --cflags --libs ${package})
    separate_arguments(options UNIX_COMMAND "${output}")
    separate_arguments(flags UNIX_COMMAND "${CXX_FLAGS}")
    step("Compiling" ${LAUNCHER} "${CXX}" -std=c++20 ${flags} "${source}" -o "${program}" ${options}
        "-Wl,-rpath,${prefix}/${LIBDIR}")
endfunction()

# Ends the test unless the file holds just the text.
function(expect_output text file)
    file(READ "${file}" expected)
    if(NOT text STREQUAL expected)
        file(WRITE "${WORK_DIR}/printed.txt" "${text}")
        execute_process(COMMAND diff -u "${file}" "${WORK_DIR}/printed.txt")
        message(FATAL_ERROR "It printed something else. If it should: cp ${WORK_DIR}/printed.txt ${file}")
    endif()
endfunction()
