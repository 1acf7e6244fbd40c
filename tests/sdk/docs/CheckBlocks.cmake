# Checks that every code block of every document has a test or a reason why it has none.
#
# cmake -DSOURCE=<the tree> -DEXTRACTED=<name>... -DRUN=<document>... -P CheckBlocks.cmake
#
# EXTRACTED are the blocks that are compiled or compared. RUN are the documents whose commands
# RunDocument.cmake runs.

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/Blocks.cmake)

# check_text(): there is no code between the blocks.
macro(check_text)
    if(block_above MATCHES "\n *(~~~|```)" OR block_above MATCHES "\n\n    [^ \n]")
        list(APPEND faults "${document} has code that is not between plain fences: ${CMAKE_MATCH_0}")
    endif()
endmacro()

set(faults "")
set(count 0)
file(GLOB_RECURSE documents RELATIVE ${SOURCE} ${SOURCE}/docs/*.md)
foreach(document IN LISTS documents ITEMS README.md CHANGELOG.md CONTRIBUTING.md)
    file(READ ${SOURCE}/${document} text)
    zol_next_block(text)
    check_text()
    while(block_found)
        math(EXPR count "${count} + 1")
        string(SUBSTRING "${block_body}" 0 60 begin)
        string(REPLACE ";" "," begin "${begin}")
        set(where "${document}, the block '${begin}'")
        if(NOT block_kind)
            list(APPEND faults "${where} does not say which test it belongs to")
        elseif(block_kind MATCHES "^comp")
            if(NOT block_name IN_LIST EXTRACTED)
                list(APPEND faults "${where} is in no test")
            endif()
        elseif(block_kind STREQUAL "not run")
            if(NOT block_name MATCHES "[a-z].* ")
                list(APPEND faults "${where} is not run and does not say why")
            endif()
        elseif(NOT document IN_LIST RUN)
            list(APPEND faults "${where} is in a document that no test follows")
        endif()
        zol_next_block(text)
        check_text()
    endwhile()
endforeach()

if(faults)
    list(JOIN faults "\n" faults)
    message(FATAL_ERROR "${faults}")
endif()
if(count EQUAL 0)
    message(FATAL_ERROR "${SOURCE} has no document with code")
endif()
message(STATUS "${count} blocks")
