# The file for Visual Studio's debugger is XML, and the headers declare every class and member that it
# names. Visual Studio is not run.
#
# cmake -DNATVIS=... -DSOURCE=... -DXMLLINT=... -P CheckNatvis.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)

run(${XMLLINT} --noout "${NATVIS}")
run(${XMLLINT} --xpath "//*[local-name()='Type']/@Name" "${NATVIS}")
string(REGEX MATCHALL "\"[^\"]+\"" types "${output}")
list(TRANSFORM types REPLACE "\"" "")

# Classes without a header of their own name.
set(header_of_CachedMessage LoggerImpl)

# class_body(<result> <class>): the text of its definition.
function(class_body result class)
    string(REGEX REPLACE ".*::" "" short ${class})
    set(header ${short})
    if(DEFINED header_of_${short})
        set(header ${header_of_${short}})
    endif()
    file(GLOB_RECURSE file ${SOURCE}/include/${header}.h ${SOURCE}/src/${header}.h)
    list(LENGTH file count)
    if(NOT count EQUAL 1)
        message(FATAL_ERROR "${class} is not in one header ${header}.h: '${file}'")
    endif()
    file(READ ${file} text)
    string(REGEX MATCH "\n(class|struct) ([A-Z_]+ )?${short} (final )?{.*" text "${text}")
    string(FIND "${text}" "\n};" end)
    if(end EQUAL -1)
        message(FATAL_ERROR "${file} does not define ${class}")
    endif()
    string(SUBSTRING "${text}" 0 ${end} text)
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

set(named 0)
foreach(type IN LISTS types)
    class_body(body ${type})
    set(ofType "//*[local-name()='Type' and @Name='${type}']//")
    run(${XMLLINT} --xpath "${ofType}*[local-name()!='Expand']/text()" "${NATVIS}")
    # Text outside of braces is a label in a DisplayString and an expression elsewhere.
    set(expressions "${output}")
    run(${XMLLINT} --xpath "${ofType}*[local-name()='DisplayString']/text()" "${NATVIS}")
    string(REPLACE "${output}" "" expressions "${expressions}")
    string(REGEX MATCHALL "{[^}]+}" inBraces "${output}")
    string(APPEND expressions " ${inBraces}")

    string(REGEX MATCHALL "![A-Za-z:]+" blocks "${expressions}")
    foreach(block IN LISTS blocks)
        string(SUBSTRING ${block} 1 -1 block)
        if(NOT block IN_LIST types)
            message(FATAL_ERROR "${type} refers to ${block}, which has no Type")
        endif()
    endforeach()

    string(REGEX REPLACE "\\([^)]*\\)" "" expressions "${expressions}")
    string(REGEX MATCHALL "[A-Za-z_]+" members "${expressions}")
    list(REMOVE_DUPLICATES members)
    foreach(member IN LISTS members)
        if(NOT body MATCHES "[ *&>]${member}( = [^;]+|{[^;]*})?;")
            message(FATAL_ERROR "${type} has no member ${member}")
        endif()
        math(EXPR named "${named} + 1")
    endforeach()
endforeach()
if(named LESS 10)
    message(FATAL_ERROR "only ${named} members were found in ${NATVIS}")
endif()
