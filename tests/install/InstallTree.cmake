# SPDX-License-Identifier: Apache-2.0
# Installs BUILD_TREE to a fresh PREFIX and checks that exactly the meant files are there.
cmake_minimum_required(VERSION 3.20)

file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_TREE} --prefix ${PREFIX}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

set(package ${PREFIX}/${LIB_DIR}/cmake/corvane)
foreach(file corvaneConfig.cmake corvaneConfigVersion.cmake corvaneTargets.cmake)
    if(NOT EXISTS ${package}/${file})
        message(SEND_ERROR "The package lacks ${file}")
    endif()
endforeach()

file(STRINGS ${package}/corvaneTargets.cmake exported REGEX "^add_library\\(")
if(NOT exported STREQUAL "add_library(corvane::corvane SHARED IMPORTED)")
    message(SEND_ERROR "The package must export corvane::corvane and nothing else: ${exported}")
endif()

# What a user needs, and nothing of the inside: a header is public if it exports something, or is
# the vocabulary.
file(GLOB_RECURSE sources RELATIVE ${SOURCE_TREE}/corvane ${SOURCE_TREE}/corvane/*.h)
set(expected corvane_export.h)
foreach(header IN LISTS sources)
    file(STRINGS ${SOURCE_TREE}/corvane/${header} exports REGEX "CORVANE_EXPORT ")
    if(exports OR header STREQUAL "elements/SCLVocabulary.h")
        list(APPEND expected ${header})
    endif()
endforeach()
file(GLOB_RECURSE installed RELATIVE ${PREFIX}/${INCLUDE_DIR}/corvane
    ${PREFIX}/${INCLUDE_DIR}/corvane/*)
list(SORT expected)
list(SORT installed)
if(NOT installed STREQUAL expected)
    message(SEND_ERROR "Installed headers:\n  ${installed}\nexpected:\n  ${expected}")
endif()
