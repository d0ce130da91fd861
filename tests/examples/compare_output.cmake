# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0

execute_process(COMMAND "${PROGRAM}" OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE status)
file(READ "${EXPECTED}" expected)
if(NOT status EQUAL 0 OR NOT output STREQUAL expected)
    message(FATAL_ERROR "${PROGRAM} ended with ${status}.\nExpected:\n${expected}\nWritten:\n${output}\n${errors}")
endif()
