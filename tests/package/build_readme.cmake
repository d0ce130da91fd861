# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0

# Builds the program of README.md with the CMake lines of README.md against an installed copy of this build, runs it, and
# compares what it prints first with the output that README.md shows.
include("${CMAKE_CURRENT_LIST_DIR}/run.cmake")

# The code block of README.md that follows ```<language>.
function(read_block language result)
    file(READ "${README}" readme)
    string(FIND "${readme}" "```${language}\n" start)
    if(start EQUAL -1)
        message(FATAL_ERROR "README.md has no block of ${language}.")
    endif()
    string(LENGTH "```${language}\n" fence)
    math(EXPR start "${start} + ${fence}")
    string(SUBSTRING "${readme}" ${start} -1 text)
    string(FIND "${text}" "```" end)
    string(SUBSTRING "${text}" 0 ${end} text)
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

read_block(cpp program)
read_block(cmake link_lines)
read_block(text output_lines)

set(prefix "${WORK_DIR}/prefix")
file(REMOVE_RECURSE "${WORK_DIR}")
run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${prefix}")
file(WRITE "${WORK_DIR}/source/main.cpp" "${program}")
file(WRITE "${WORK_DIR}/source/CMakeLists.txt"
    "cmake_minimum_required(VERSION 3.22)\nproject(Readme LANGUAGES CXX)\nadd_executable(app main.cpp)\n${link_lines}")
run(${CMAKE_COMMAND} -S "${WORK_DIR}/source" -B "${WORK_DIR}/build" -G Ninja
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=Debug)
run(${CMAKE_COMMAND} --build "${WORK_DIR}/build")

# The program runs until its output is closed. Figures differ from run to run.
run(sh -c "'${WORK_DIR}/build/app' 2>&1 | head -n 1")
string(REGEX MATCH "[^\n]*" first_line "${output_lines}")
foreach(line first_line output)
    string(REGEX REPLACE "-?[0-9]+[.0-9e-]*" "#" ${line} "${${line}}")
    string(STRIP "${${line}}" ${line})
endforeach()
if(NOT output STREQUAL first_line)
    message(FATAL_ERROR "The program of README.md printed\n${output}\nand not\n${first_line}")
endif()
