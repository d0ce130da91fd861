# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0

# The libraries export the documented interface and nothing else: the classes of the namespace, the hashes of the keys.
# Libraries that are linked into them privately, such as recordtext, are not exported.
string(REPLACE "," ";" libraries "${LIBRARIES}")
foreach(library ${libraries})
    execute_process(COMMAND nm --dynamic --defined-only --demangle --format=posix "${library}"
        OUTPUT_VARIABLE symbols RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "nm cannot read ${library}.")
    endif()
    string(REPLACE ";" "," symbols "${symbols}")
    string(REGEX MATCHALL "[^\n]+" lines "${symbols}")
    set(count 0)
    foreach(line ${lines})
        # Weak symbols are instances of Qt's and the standard library's templates, with the visibility of those; three others
        # are the linker's own.
        if(line MATCHES " [VWu] [0-9a-f]" OR line MATCHES "^(__bss_start|_edata|_end) ")
            continue()
        endif()
        # A private class inside an exported one would be exported with it.
        if(line MATCHES "::Recording::")
            message(SEND_ERROR "${library} exports: ${line}")
        endif()
        math(EXPR count "${count} + 1")
        if(NOT line MATCHES "^(vtable for |typeinfo for |typeinfo name for |non-virtual thunk to )?Velk::(MemoryKey|DisplayedMemoryKey|MemoryKeyListModel|DisplayedMemoryKeyListModel|ConnectionManager|MemoryInterface|RecordFileSaver|RecordSaveResult)(::| )"
           AND NOT line MATCHES "^qHash\\(Velk::(Displayed)?MemoryKey const&\\) ")
            message(SEND_ERROR "${library} exports: ${line}")
        endif()
    endforeach()
    if(count LESS 5)
        message(SEND_ERROR "${library} exports ${count} symbols only.")
    endif()
endforeach()
