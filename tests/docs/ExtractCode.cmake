# zol_extract_code(<document> <name> <output variable>)
#
# Writes the code block that stands in a document under the line
#
#     <!-- compiled: <name> -->
#
# to a file of that name in the build tree, so that the tests compile what readers see, and sets the
# variable to its path. A change of the document makes the next build extract again.
function(zol_extract_code document name output)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${document})
    file(READ ${document} text)

    set(marker "<!-- compiled: ${name} -->\n")
    string(FIND "${text}" "${marker}" begin)
    if(begin EQUAL -1)
        message(FATAL_ERROR "${document} has no code marked '${name}'")
    endif()
    string(SUBSTRING "${text}" ${begin} -1 text)
    string(FIND "${text}" "```cpp\n" begin)
    math(EXPR begin "${begin} + 7")
    string(SUBSTRING "${text}" ${begin} -1 text)
    string(FIND "${text}" "```" end)
    string(SUBSTRING "${text}" 0 ${end} text)

    set(path ${CMAKE_CURRENT_BINARY_DIR}/${name})
    file(CONFIGURE OUTPUT ${path} CONTENT "${text}" @ONLY)
    set(${output} ${path} PARENT_SCOPE)
endfunction()
