# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0

# Installs the build to an empty prefix and runs the velk that is there.
file(REMOVE_RECURSE "${PREFIX}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${PREFIX}"
    OUTPUT_QUIET ERROR_VARIABLE errors RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "The installation failed:\n${errors}")
endif()
execute_process(COMMAND "${PREFIX}/${BINDIR}/velk" keys --robot sim: --filter Arm/*
    OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR NOT output MATCHES "^DATA     Arm/")
    message(FATAL_ERROR "The installed velk ended with ${status}:\n${output}\n${errors}")
endif()

# A plugin is found beside the installed libraries, without the variable that names other folders.
if(PLUGIN)
    unset(ENV{MEMORYKEYMODEL_CONNECTIONS})
    file(COPY "${PLUGIN}" DESTINATION "${PREFIX}/${LIBDIR}/memorykeymodel/connections")
    execute_process(COMMAND "${PREFIX}/${BINDIR}/velk" robots
        OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE status)
    if(NOT status EQUAL 0 OR NOT output MATCHES "\n${SCHEME}\n")
        message(FATAL_ERROR "The installed velk does not list ${SCHEME} of its plugin:\n${output}\n${errors}")
    endif()
endif()
file(REMOVE_RECURSE "${PREFIX}")
