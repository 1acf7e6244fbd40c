# Counts the instructions that PROBE needs for one piece of WORK, with VALGRIND, and compares them with
# what COUNTS has stored. To accept an intended change, write the number of the message there.

set(few 1000)
set(many 3000)
set(tolerance 10) # per cent; compilers and C libraries of other versions need that much

function(count_instructions times result)
    execute_process(
        COMMAND ${VALGRIND} --tool=callgrind --callgrind-out-file=${OUTPUT} ${PROBE} ${WORK} ${times}
        RESULT_VARIABLE ended
        OUTPUT_VARIABLE output
        ERROR_VARIABLE output)
    if(NOT ended EQUAL 0 OR NOT output MATCHES "Collected : ([0-9]+)")
        message(FATAL_ERROR "${PROBE} ${WORK} ${times} under ${VALGRIND} ended with ${ended}:\n${output}")
    endif()
    set(${result} ${CMAKE_MATCH_1} PARENT_SCOPE)
endfunction()

count_instructions(${few} fewCounted)
count_instructions(${many} manyCounted)
math(EXPR counted "(${manyCounted} - ${fewCounted}) / (${many} - ${few})")

file(STRINGS ${COUNTS} line REGEX "^${WORK} [0-9]+$")
if(NOT line)
    message(FATAL_ERROR "${COUNTS} has no line for it; it should read: ${WORK} ${counted}")
endif()
string(REGEX REPLACE "^${WORK} " "" stored ${line})
math(EXPR most "${stored} * (100 + ${tolerance}) / 100")
message(STATUS "${WORK}: ${counted} instructions, stored ${stored}, at most ${most}")
if(counted GREATER most)
    message(FATAL_ERROR "${WORK} needs ${counted} instructions in place of ${stored}, more than ${most}")
endif()
