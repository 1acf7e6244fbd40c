# Runs zol-backend-check and compares its report and its exit code with what is expected.
#
# cmake -DTOOL=<command> -DNAME=<back end> -DDIR=... -DARGS=<more arguments> -DEXIT=<exit code>
#       -DWRONG=<names of the checks that find a fault> -DNOTES=<names of checks with a note, at least>
#       -DSAYS=<pattern in the text of a fault or note>
#       -DLINES=<pattern in the report without --json, or in the error message> -P RunCheck.cmake

cmake_minimum_required(VERSION 3.25)

if(LINES)
    execute_process(COMMAND ${TOOL} "${NAME}" ${DIR} ${ARGS}
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
    string(REPLACE "\r\n" "\n" lines "${output}${errors}")
    if(NOT result STREQUAL EXIT OR NOT lines MATCHES "${LINES}")
        message(FATAL_ERROR "exit code ${result}, expected ${EXIT} and '${LINES}' in\n${output}${errors}")
    endif()
    return()
endif()

macro(run_check)
    execute_process(COMMAND ${TOOL} "${NAME}" ${DIR} --json ${ARGS}
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
endmacro()

run_check()
if(result EQUAL 1 AND "${output}${errors}" STREQUAL "")
    # Under Wine, one start in thousands ends so before the program begins. The tool itself writes
    # something whatever happens.
    message(STATUS "the program has not started, once more")
    run_check()
endif()
string(JSON count ERROR_VARIABLE failed LENGTH "${output}" checks)
if(failed)
    message(FATAL_ERROR "there is no report (${result}): ${output}${errors}")
endif()

set(wrong "")
set(notes "")
set(texts "")
math(EXPR last "${count} - 1")
foreach(index RANGE ${last})
    string(JSON check GET "${output}" checks ${index} check)
    string(JSON checkResult GET "${output}" checks ${index} result)
    string(JSON text GET "${output}" checks ${index} text)
    if(checkResult STREQUAL "wrong")
        list(APPEND wrong ${check})
        string(APPEND texts "${text}\n")
    elseif(checkResult STREQUAL "note")
        list(APPEND notes ${check})
        string(APPEND texts "${text}\n")
    endif()
endforeach()

set(faults "")
if(NOT result STREQUAL EXIT)
    list(APPEND faults "the exit code is ${result} and not ${EXIT}")
endif()
if(NOT wrong STREQUAL "${WRONG}")
    list(APPEND faults "wrong is '${wrong}' and not '${WRONG}'")
endif()
foreach(note IN LISTS NOTES)
    if(NOT note IN_LIST notes)
        list(APPEND faults "there is no note of ${note}")
    endif()
endforeach()
if(SAYS AND NOT texts MATCHES "${SAYS}")
    list(APPEND faults "nothing matches '${SAYS}'")
endif()
if(faults)
    list(JOIN faults "\n" faults)
    message(FATAL_ERROR "${faults}\nin\n${output}${errors}")
endif()
