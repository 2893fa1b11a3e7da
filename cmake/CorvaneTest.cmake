# SPDX-License-Identifier: Apache-2.0
# corvane_test(NAME): builds NAME.cpp as a Qt Test program against the shared library and adds it
# to CTest. corvane_inner_test(NAME) does so against the library's objects, for classes that the
# library does not export. Both run on Qt's offscreen platform.
set(CORVANE_SAMPLES_DIR ${PROJECT_SOURCE_DIR}/samples)

function(corvane_add_test_program name library)
    add_executable(${name} ${name}.cpp)
    target_link_libraries(${name} PRIVATE ${library} Qt${QT_MAJOR}::Test)
    target_compile_definitions(${name} PRIVATE
        CORVANE_SAMPLES_DIR="${CORVANE_SAMPLES_DIR}"
        CORVANE_TEST_DIR="${PROJECT_SOURCE_DIR}/tests"
        CORVANE_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    # What is tested is optimized as the build type says. The tests themselves are compiled once for
    # each run, and that takes a third of the time this way.
    target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU,Clang>:-O0>)
    corvane_warnings(${name})
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen"
        TIMEOUT 600)
endfunction()

function(corvane_test name)
    corvane_add_test_program(${name} corvane::corvane)
endfunction()

function(corvane_inner_test name)
    corvane_add_test_program(${name} corvane_objects)
endfunction()
