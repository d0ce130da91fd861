# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0

include("${CMAKE_CURRENT_LIST_DIR}/run.cmake")

set(prefix "${WORK_DIR}/prefix")
file(REMOVE_RECURSE "${WORK_DIR}")
run(${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${prefix}")

# Another place than the one it was installed to: the package must not hold the path of its build.
file(RENAME "${prefix}" "${WORK_DIR}/moved")
set(prefix "${WORK_DIR}/moved")

run(${CMAKE_COMMAND} -S "${OUTSIDE_DIR}" -B "${WORK_DIR}/build" -G Ninja
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_BUILD_TYPE=Debug)
run(${CMAKE_COMMAND} --build "${WORK_DIR}/build")
run("${WORK_DIR}/build/outside")
string(STRIP "${output}" output)
if(NOT output STREQUAL "Qt ${EXPECTED_QT}: Arm DATA 42")
    message(FATAL_ERROR "The outside program printed: ${output}")
endif()

# The record text is a part of the libraries that use it: no file, header or target of its own is installed.
file(GLOB_RECURSE installed RELATIVE "${prefix}" "${prefix}/*")
if(NOT installed MATCHES "libmemorykeymodel\\.so" OR installed MATCHES "recordtext")
    message(FATAL_ERROR "The installed files are: ${installed}")
endif()
file(READ "${prefix}/${LIBDIR}/cmake/MemoryKeyModel/MemoryKeyModelTargets.cmake" targets)
if(NOT targets MATCHES "MemoryKeyModel::recordfile" OR targets MATCHES "recordtext")
    message(FATAL_ERROR "MemoryKeyModelTargets.cmake:\n${targets}")
endif()

execute_process(COMMAND ${CMAKE_COMMAND} -S "${OUTSIDE_DIR}" -B "${WORK_DIR}/missing" -G Ninja
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${COMPILER} -DEXTRA_COMPONENT=teleport
    RESULT_VARIABLE result OUTPUT_QUIET ERROR_QUIET)
if(result EQUAL 0)
    message(FATAL_ERROR "A component that does not exist was found.")
endif()

file(READ "${prefix}/${LIBDIR}/pkgconfig/memorykeymodel.pc" pc)
if(NOT pc MATCHES "-lmemorykeymodel" OR NOT pc MATCHES "Requires: robotconnection = [0-9.]+ Qt${EXPECTED_QT}Gui")
    message(FATAL_ERROR "memorykeymodel.pc:\n${pc}")
endif()
set(ENV{PKG_CONFIG_PATH} "${prefix}/${LIBDIR}/pkgconfig")
run(pkg-config --cflags --libs memorykeymodel)
separate_arguments(flags UNIX_COMMAND "${output}")
run(${COMPILER} -std=c++17 -fPIC "${OUTSIDE_DIR}/main.cpp" -o "${WORK_DIR}/with_pkg_config" ${flags}
    -Wl,-rpath,${prefix}/${LIBDIR})
run("${WORK_DIR}/with_pkg_config")
