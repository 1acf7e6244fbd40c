# zol_linked_headers(<variable> <folder>...)
#
# Sets <variable> to a folder with links to these folders of /usr/include. The other folders there are
# for Linux.
function(zol_linked_headers variable)
    set(links ${CMAKE_BINARY_DIR}/linked)
    file(MAKE_DIRECTORY ${links})
    foreach(folder IN LISTS ARGN)
        if(NOT IS_DIRECTORY /usr/include/${folder})
            message(FATAL_ERROR "/usr/include/${folder} is missing: run scripts/setup.sh all")
        endif()
        file(CREATE_LINK /usr/include/${folder} ${links}/${folder} SYMBOLIC)
    endforeach()
    set(${variable} ${links} PARENT_SCOPE)
endfunction()
