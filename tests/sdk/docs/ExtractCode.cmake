# zol_extract_code(<document> <name> <output variable>)
#
# Writes the block of a document under the line
#
#     <!-- compiled: <name> -->      or      <!-- compared: <name> -->
#
# to a file of that name in the build tree, so that the tests compile what readers see, and sets the
# variable to its path. After a change of the document the next build extracts again.
include(${CMAKE_CURRENT_LIST_DIR}/Blocks.cmake)

function(zol_extract_code document name output)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${document})
    file(READ ${document} text)
    zol_next_block(text)
    while(block_found)
        if(block_kind MATCHES "^comp" AND block_name STREQUAL name)
            set(path ${CMAKE_CURRENT_BINARY_DIR}/${name})
            file(CONFIGURE OUTPUT ${path} CONTENT "${block_body}" @ONLY)
            set(${output} ${path} PARENT_SCOPE)
            set_property(GLOBAL APPEND PROPERTY ZOL_EXTRACTED_BLOCKS ${name})
            return()
        endif()
        zol_next_block(text)
    endwhile()
    message(FATAL_ERROR "${document} has no code marked '${name}'")
endfunction()
