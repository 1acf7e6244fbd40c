# ctest reads this once for each test program: it adds a test for each unit (suite or test) that the
# program lists. The list is kept until the program is built again.
#
# Expects program, emulator, unit, list (the file that keeps the list) and properties.

cmake_policy(VERSION 3.25)

if(NOT EXISTS "${program}")
    cmake_path(GET program STEM name)
    add_test(${name}_NOT_BUILT ${name}_NOT_BUILT)
    return()
endif()

if(NOT EXISTS "${list}" OR "${program}" IS_NEWER_THAN "${list}")
    cmake_path(GET program PARENT_PATH folder)
    execute_process(
        COMMAND ${emulator} ${program} --gtest_list_tests
        WORKING_DIRECTORY ${folder}
        TIMEOUT 300
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0 OR NOT output MATCHES "\n  ")
        message(FATAL_ERROR "${program} does not list its tests (${result}):\n${output}")
    endif()
    file(WRITE "${list}" "${output}")
endif()

# A suite is "Suite.", a test of it "  Test"; what follows "#" is the type or value of a parameter.
file(STRINGS "${list}" lines)
foreach(line IN LISTS lines)
    string(REGEX REPLACE " +#.*$" "" line "${line}")
    set(name "")
    if(line MATCHES "^([^ ]+)\\.$")
        set(suite ${CMAKE_MATCH_1})
        if(unit STREQUAL "suite")
            set(name ${suite})
            set(filter "${suite}.*")
        endif()
    elseif(line MATCHES "^  ([^ ]+)$" AND unit STREQUAL "test")
        set(name ${suite}.${CMAKE_MATCH_1})
        set(filter ${name})
    endif()
    if(name)
        add_test(${name} ${emulator} ${program} --gtest_filter=${filter})
        set_tests_properties(${name} PROPERTIES ${properties})
    endif()
endforeach()
