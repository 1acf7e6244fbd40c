# Runs a program and checks its exit code and its output.
#
# cmake -DPROGRAM=<file> [-DEMULATOR=<runs the program>] [-DARGS=<argument>;...]
#       [-DEXIT=<exit code>, 0 by default] [-DMATCHES=<regular expression>;...] -P ExpectOutput.cmake
#
# Each expression must match somewhere in the output: standard output and standard error in the order
# of writing, with "\n" as line end on each platform. A line feed is put in front, so that "\n" also
# matches before the first line. A program that is ended by a signal has no exit code. Neither an
# argument nor an expression may contain a semicolon.

cmake_minimum_required(VERSION 3.25)

if(NOT DEFINED EXIT)
    set(EXIT 0)
endif()
execute_process(COMMAND ${EMULATOR} ${PROGRAM} ${ARGS}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
string(REPLACE "\r\n" "\n" output "\n${output}")

set(failures "")
if(NOT result STREQUAL EXIT)
    string(APPEND failures "\nexit code: ${result}, expected ${EXIT}")
endif()
foreach(pattern IN LISTS MATCHES)
    if(NOT output MATCHES "${pattern}")
        string(APPEND failures "\nno match for: ${pattern}")
    endif()
endforeach()
if(failures)
    message(NOTICE "The output of ${PROGRAM}:${output}${failures}")
    message(FATAL_ERROR "${PROGRAM} failed the check")
endif()
