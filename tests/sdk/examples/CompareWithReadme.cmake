# The README shows the two files of examples/hello, character for character.
#
# cmake -DSOURCE=<the tree> -P CompareWithReadme.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../docs/Blocks.cmake)

set(compared "")
file(READ ${SOURCE}/README.md text)
zol_next_block(text)
while(block_found)
    if(block_name MATCHES "^(Example.cpp|CMakeLists.txt)$")
        file(READ ${SOURCE}/examples/hello/${block_name} hello)
        if(NOT block_body STREQUAL hello)
            message(FATAL_ERROR "README.md and examples/hello/${block_name} differ")
        endif()
        list(APPEND compared ${block_name})
    endif()
    zol_next_block(text)
endwhile()
if(NOT compared STREQUAL "Example.cpp;CMakeLists.txt")
    message(FATAL_ERROR "README.md does not show both files of examples/hello, but: ${compared}")
endif()
