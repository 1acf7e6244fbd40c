# Does what a document says in a new folder: writes its files, runs its commands and compares their
# output with the output that it shows.
#
# cmake -DDOCUMENT=... -DWORK=... -DPACKAGE=<the installed SDK> -DPLATFORM=linux|windows
#       -DWINE=<runs Windows programs> [-DGIVEN=<file>...] [-DTHEN=<command>] -P RunDocument.cmake
#
# PREFIX in a command stands for PACKAGE, SOURCE for the sources of the framework. GIVEN are files that are copied to the folder first. THEN is
# one more command at the end. Dates and times are not compared.

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/Blocks.cmake)
cmake_path(SET SOURCE NORMALIZE ${CMAKE_CURRENT_LIST_DIR}/../../..)

# plain(<variable>): removes what differs from run to run.
function(plain variable)
    set(text "${${variable}}")
    string(REPLACE "\r" "" text "${text}")
    string(REGEX REPLACE "[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9] [0-9:.]+" "TIME" text "${text}")
    set(${variable} "${text}" PARENT_SCOPE)
endfunction()

# for_this_platform(<result>): whether the block applies to PLATFORM.
function(for_this_platform result)
    if(block_name STREQUAL "" OR block_name STREQUAL PLATFORM)
        set(${result} TRUE PARENT_SCOPE)
    elseif(block_name MATCHES "^(linux|windows)$")
        set(${result} FALSE PARENT_SCOPE)
    else()
        message(FATAL_ERROR "unknown platform ${block_name}")
    endif()
endfunction()

# run_commands(<text>): sets <output>.
function(run_commands text)
    string(REGEX REPLACE "([^_])PREFIX" "\\1${PACKAGE}" commands "\n${text}")
    string(REGEX REPLACE "([^_])SOURCE([^_])" "\\1${SOURCE}\\2" commands "${commands}")
    file(WRITE "${WORK}/commands" "set -euo pipefail${commands}")
    # Standard output and standard error in one stream, as at a terminal.
    execute_process(COMMAND bash "${WORK}/commands" WORKING_DIRECTORY "${WORK}/home"
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(NOTICE "${output}")
        message(FATAL_ERROR "failed (${result}): ${commands}")
    endif()
    set(commands "${commands}" PARENT_SCOPE)
    set(output "${output}" PARENT_SCOPE)
    set(ran TRUE PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/home ${WORK}/tools)
foreach(file IN LISTS GIVEN)
    file(COPY ${file} DESTINATION ${WORK}/home)
endforeach()
if(WINE)
    # The document calls it wine; this one uses the tree's own prefix.
    file(WRITE ${WORK}/tools/wine "#!/bin/sh\nPATH='$ENV{PATH}' exec '${WINE}' \"$@\"\n")
    file(CHMOD ${WORK}/tools/wine PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
    set(ENV{PATH} "${WORK}/tools:$ENV{PATH}")
endif()

set(ran FALSE)
file(READ ${DOCUMENT} text)
zol_next_block(text)
while(block_found)
    if(block_kind STREQUAL "file" OR (block_kind STREQUAL "compiled" AND block_name MATCHES "\\.cpp$"))
        file(WRITE "${WORK}/home/${block_name}" "${block_body}")
    elseif(block_kind STREQUAL "run")
        for_this_platform(here)
        if(here)
            run_commands("${block_body}")
        endif()
    elseif(block_kind STREQUAL "output")
        for_this_platform(here)
        if(here)
            set(shown "${block_body}")
            plain(shown)
            plain(output)
            if(NOT output STREQUAL shown)
                message(FATAL_ERROR "${commands}wrote\n${output}and the document shows\n${shown}")
            endif()
        endif()
    endif()
    zol_next_block(text)
endwhile()
if(THEN)
    run_commands("${THEN}\n")
endif()
if(NOT ran)
    message(FATAL_ERROR "${DOCUMENT} has no commands for ${PLATFORM}")
endif()
