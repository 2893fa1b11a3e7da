# SPDX-License-Identifier: Apache-2.0
# Fails if the documentation names a file of SOURCE_TREE that is not there, so that it keeps up with
# what is moved and renamed. Looked at are paths in backticks that begin with a folder of the tree,
# and links.
cmake_minimum_required(VERSION 3.20)

file(GLOB_RECURSE pages ${SOURCE_TREE}/docs/*.md)
list(APPEND pages ${SOURCE_TREE}/README.md)
set(count 0)
foreach(page IN LISTS pages)
    get_filename_component(folder ${page} DIRECTORY)
    file(READ ${page} text)
    string(REPLACE ";" " " text "${text}")
    string(REGEX MATCHALL "`(apps|bench|cmake|corvane|docs|samples|scripts|tests)/[^` <>*]+`" paths
        "${text}")
    foreach(path IN LISTS paths)
        string(REPLACE "`" "" path ${path})
        math(EXPR count "${count} + 1")
        if(NOT EXISTS ${SOURCE_TREE}/${path})
            message(SEND_ERROR "${page} names ${path}, which is not there")
        endif()
    endforeach()
    string(REGEX MATCHALL "\\]\\([^):#]+\\)" links "${text}")
    foreach(link IN LISTS links)
        string(REGEX REPLACE "^..|.$" "" link ${link})
        math(EXPR count "${count} + 1")
        if(NOT EXISTS ${folder}/${link})
            message(SEND_ERROR "${page} links to ${link}, which is not there")
        endif()
    endforeach()
endforeach()
if(count LESS 20)
    message(SEND_ERROR "Only ${count} paths were found in the documentation")
endif()
