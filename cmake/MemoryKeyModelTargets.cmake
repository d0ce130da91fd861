# SPDX-FileCopyrightText: The memorykeymodel developers
# SPDX-License-Identifier: Apache-2.0

# How this project declares its targets. Every setting is a property of these targets and reaches nobody else's.

# Language level, warnings and sanitizers of one of our targets.
function(memorykeymodel_configure_target target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
        $<$<BOOL:${MEMORYKEYMODEL_WARNINGS_AS_ERRORS}>:-Werror>)
    target_compile_definitions(${target} PRIVATE QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_DEPRECATED_WARNINGS)
    if(NOT target MATCHES "^tst_") # tests have many texts: they may be plain literals
        target_compile_definitions(${target} PRIVATE QT_NO_CAST_FROM_ASCII)
    endif()
    set_target_properties(${target} PROPERTIES AUTOMOC ON CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
    if(MEMORYKEYMODEL_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${MEMORYKEYMODEL_SANITIZE} -fno-omit-frame-pointer
            -fno-sanitize-recover=all)
        target_link_options(${target} PRIVATE -fsanitize=${MEMORYKEYMODEL_SANITIZE})
    endif()
endfunction()

# A shared library of this folder: versioned, exported API only, installed with its headers and its CMake target
# MemoryKeyModel::<name>. Headers are included as <folder/header.h>, folder being the path below the project.
#
#   memorykeymodel_add_library(<name>
#       HEADERS <public header>...       installed
#       SOURCES <source>...
#       PUBLIC_LINK <target>...          what the headers need
#       PRIVATE_LINK <target>...)        what only the sources need
function(memorykeymodel_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;SOURCES;PUBLIC_LINK;PRIVATE_LINK")
    if(arg_UNPARSED_ARGUMENTS OR arg_KEYWORDS_MISSING_VALUES)
        message(FATAL_ERROR "memorykeymodel_add_library(${name}): unknown or empty: ${arg_UNPARSED_ARGUMENTS} ${arg_KEYWORDS_MISSING_VALUES}")
    endif()
    file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
    set(export_header "${PROJECT_BINARY_DIR}/include/${folder}/${name}_export.h")

    add_library(${name} SHARED ${arg_HEADERS} ${arg_SOURCES})
    add_library(MemoryKeyModel::${name} ALIAS ${name})
    memorykeymodel_configure_target(${name})
    generate_export_header(${name} EXPORT_FILE_NAME "${export_header}")
    target_include_directories(${name} PUBLIC
        "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>"
        "$<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
    target_link_libraries(${name} PUBLIC ${arg_PUBLIC_LINK} PRIVATE ${arg_PRIVATE_LINK})
    # Below any prefix, an installed library finds the libraries of this project that it needs beside itself.
    set_target_properties(${name} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH "$ORIGIN")
    if(NOT name MATCHES "^(robotconnection|memorykeymodel)$")
        set_target_properties(${name} PROPERTIES OUTPUT_NAME "memorykeymodel-${name}")
    else()
        set_target_properties(${name} PROPERTIES OUTPUT_NAME "${name}")
    endif()

    install(TARGETS ${name} EXPORT MemoryKeyModelTargets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
    install(FILES ${arg_HEADERS} "${export_header}" DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/${folder}")
    set_property(GLOBAL APPEND PROPERTY MEMORYKEYMODEL_COMPONENTS ${name})
endfunction()

# A test program tst_<name> from tst_<name>.cpp and the given further sources, run by ctest under the name
# <folder>/<name>. Tests run without a display, and with the variables that
# MEMORYKEYMODEL_TEST_ENVIRONMENT lists. With EXAMPLE_OF the test can include "<header's stem>_example.inc", which is the
# example in the comments of that header.
#
#   memorykeymodel_add_test(<name> [SOURCES <further source>...] [EXAMPLE_OF <header>] LINK <target>...)
function(memorykeymodel_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "EXAMPLE_OF" "SOURCES;LINK")
    if(arg_UNPARSED_ARGUMENTS OR arg_KEYWORDS_MISSING_VALUES)
        message(FATAL_ERROR "memorykeymodel_add_test(${name}): unknown or empty: ${arg_UNPARSED_ARGUMENTS} ${arg_KEYWORDS_MISSING_VALUES}")
    endif()
    file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}/tests" "${CMAKE_CURRENT_SOURCE_DIR}")
    add_executable(tst_${name} tst_${name}.cpp ${arg_SOURCES})
    memorykeymodel_configure_target(tst_${name})
    target_include_directories(tst_${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
    target_link_libraries(tst_${name} PRIVATE ${arg_LINK} ${QT}::Test)
    if(arg_EXAMPLE_OF)
        set(header "${PROJECT_SOURCE_DIR}/${arg_EXAMPLE_OF}")
        set(script "${PROJECT_SOURCE_DIR}/tests/support/header_example.py")
        cmake_path(GET header STEM stem)
        set(example "${CMAKE_CURRENT_BINARY_DIR}/${stem}_example.inc")
        add_custom_command(OUTPUT "${example}"
            COMMAND ${MEMORYKEYMODEL_TEST_PYTHON} "${script}" "${header}" "${example}"
            DEPENDS "${header}" "${script}"
            VERBATIM)
        # A target, and not a source of the test: moc reads it, and would wait for itself.
        add_custom_target(tst_${name}_example DEPENDS "${example}")
        set_property(TARGET tst_${name} APPEND PROPERTY AUTOGEN_TARGET_DEPENDS tst_${name}_example)
        add_dependencies(tst_${name} tst_${name}_example)
        target_include_directories(tst_${name} PRIVATE "${CMAKE_CURRENT_BINARY_DIR}")
    endif()
    if(TARGET tst_precompiled_qt)
        target_precompile_headers(tst_${name} REUSE_FROM tst_precompiled_qt)
    endif()
    add_test(NAME ${folder}/${name} COMMAND tst_${name})
    set_tests_properties(${folder}/${name} PROPERTIES TIMEOUT 300
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;${MEMORYKEYMODEL_TEST_ENVIRONMENT}")
endfunction()

# The exported package: targets, version and configuration files, pkg-config files.
function(memorykeymodel_install_package)
    set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/MemoryKeyModel")
    get_property(MEMORYKEYMODEL_COMPONENTS GLOBAL PROPERTY MEMORYKEYMODEL_COMPONENTS)
    configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/MemoryKeyModelConfig.cmake.in"
        "${PROJECT_BINARY_DIR}/MemoryKeyModelConfig.cmake" INSTALL_DESTINATION "${package_dir}")
    write_basic_package_version_file("${PROJECT_BINARY_DIR}/MemoryKeyModelConfigVersion.cmake"
        COMPATIBILITY SameMajorVersion)
    install(FILES "${PROJECT_BINARY_DIR}/MemoryKeyModelConfig.cmake"
        "${PROJECT_BINARY_DIR}/MemoryKeyModelConfigVersion.cmake" DESTINATION "${package_dir}")
    install(EXPORT MemoryKeyModelTargets NAMESPACE MemoryKeyModel:: DESTINATION "${package_dir}")

    # Relative to the file itself: the prefix may be chosen as late as at installation.
    file(RELATIVE_PATH PKGCONFIG_TO_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
    string(REGEX REPLACE "/$" "" PKGCONFIG_TO_PREFIX "${PKGCONFIG_TO_PREFIX}")
    foreach(module robotconnection memorykeymodel)
        configure_file("${PROJECT_SOURCE_DIR}/cmake/${module}.pc.in" "${PROJECT_BINARY_DIR}/${module}.pc" @ONLY)
        install(FILES "${PROJECT_BINARY_DIR}/${module}.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")
    endforeach()
endfunction()
