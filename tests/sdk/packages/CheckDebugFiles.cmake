# The installed module is stripped and exports what the built one exports. Its source lines are found
# only with the debug file beside it.
#
# cmake -DUNPACKED=... -DWORK=... -DMODULE=<the built module> -DADDR2LINE=... -DNM=...
#       -DOBJDUMP=... -P CheckDebugFiles.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)

get_filename_component(name ${MODULE} NAME)
file(GLOB_RECURSE stripped "${UNPACKED}/with-debug-files/${name}")
file(GLOB_RECURSE debugFile "${UNPACKED}/with-debug-files/${name}.debug")

run(${OBJDUMP} -h "${stripped}")
if(output MATCHES "debug_info" OR NOT output MATCHES "gnu_debuglink")
    message(FATAL_ERROR "the installed module is not stripped, or has no link:\n${output}")
endif()

# exported_names(<result> <module>)
function(exported_names result module)
    if(module MATCHES "\\.dll$")
        run(${OBJDUMP} -p "${module}")
        string(REGEX MATCHALL "\\[ *[0-9]+\\] _Z[A-Za-z0-9_]+" names "${output}")
    else()
        run(${NM} --dynamic --defined-only "${module}")
        string(REGEX MATCHALL "[A-Za-z] _Z[A-Za-z0-9_]+" names "${output}")
    endif()
    set(${result} "${names}" PARENT_SCOPE)
endfunction()
exported_names(built ${MODULE})
exported_names(installed "${stripped}")
if(NOT built OR NOT built STREQUAL installed)
    message(FATAL_ERROR "the built module exports\n${built}\nthe installed one\n${installed}")
endif()

run(${NM} --defined-only "${debugFile}")
if(NOT output MATCHES "([0-9a-f]+) [Tt] _ZNK3ZOL9Framework12StringHolder5c_strEv")
    message(FATAL_ERROR "the debug information has no StringHolder::c_str")
endif()
set(address 0x${CMAKE_MATCH_1})

# expect_line(<module> <pattern>): addr2line's answer for StringHolder::c_str.
function(expect_line module pattern)
    run(${ADDR2LINE} --inlines -e "${module}" ${address})
    if(NOT output MATCHES "${pattern}")
        message(FATAL_ERROR "${module}: c_str is at '${output}', which does not match '${pattern}'")
    endif()
endfunction()
expect_line("${stripped}" "src/ZOL/Framework/StringHolder\\.cpp:[1-9][0-9]*")

file(REMOVE_RECURSE ${WORK})
file(COPY "${stripped}" DESTINATION ${WORK})
expect_line(${WORK}/${name} "^\\?\\?:")
