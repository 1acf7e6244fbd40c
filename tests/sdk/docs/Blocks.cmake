# Iterates over the fenced code blocks of a document. The line above each fence names its test:
#
#     <!-- compiled: NAME -->        C++, compiled by CMakeLists.txt beside this file
#     <!-- file: NAME -->            a file that RunDocument.cmake writes
#     <!-- run -->                   commands that RunDocument.cmake runs; run: linux or run: windows only
#                                    on that platform
#     <!-- output -->                the output of the commands before it; output: linux, output: windows
#     <!-- compared: NAME -->        a text that a test of CMakeLists.txt compares with the real output
#     <!-- not run: REASON -->       not tested
#
# zol_next_block(<variable with the text>) removes the first block from the text and sets
#   block_found, block_kind, block_name, block_body, and block_above, the text before the block,
# where block_kind is empty if the line above the fence is none of these.
function(zol_next_block variable)
    set(text "\n${${variable}}")
    set(block_found FALSE PARENT_SCOPE)
    set(block_above "${text}" PARENT_SCOPE)
    string(REGEX MATCH "\n *```[a-z]*\n" fence "${text}")
    if(NOT fence)
        return()
    endif()
    string(FIND "${text}" "${fence}" begin)
    string(SUBSTRING "${text}" 0 ${begin} above)
    string(LENGTH "${fence}" length)
    math(EXPR begin "${begin} + ${length}")
    string(SUBSTRING "${text}" ${begin} -1 text)
    string(REGEX MATCH "\n( *)```" fence "${fence}")
    set(indent "${CMAKE_MATCH_1}")

    string(FIND "${text}" "${indent}```\n" end)
    if(end EQUAL -1)
        message(FATAL_ERROR "a block has no end, or the fence before it names no plain language:\n${fence}${text}")
    endif()
    string(SUBSTRING "${text}" 0 ${end} body)
    string(LENGTH "${indent}```" length)
    math(EXPR end "${end} + ${length}")
    string(SUBSTRING "${text}" ${end} -1 text)

    set(kind "")
    set(name "")
    if(above MATCHES "\n *<!-- (compiled|file|run|output|compared|not run)(: ([^\n]*))? -->$")
        set(kind "${CMAKE_MATCH_1}")
        set(name "${CMAKE_MATCH_3}")
    endif()
    set(block_found TRUE PARENT_SCOPE)
    set(block_kind "${kind}" PARENT_SCOPE)
    set(block_name "${name}" PARENT_SCOPE)
    set(block_above "${above}" PARENT_SCOPE)
    set(block_body "${body}" PARENT_SCOPE)
    set(${variable} "${text}" PARENT_SCOPE)
endfunction()
