# Counts the instructions that PROBE executes for one operation of each of the WORKLOADS, with VALGRIND,
# and compares the counts with the file COUNTS; with STORE, writes them to that file.

set(few 1000)
set(many 3000)
set(tolerance 10) # percent: other patch releases of the compiler and C library need that much

function(count_instructions workload times result)
    execute_process(
        COMMAND ${VALGRIND} --tool=callgrind --callgrind-out-file=${OUTPUT}/${workload}.callgrind
            ${PROBE} ${workload} ${times}
        RESULT_VARIABLE ended
        OUTPUT_VARIABLE output
        ERROR_VARIABLE output)
    if(NOT ended EQUAL 0 OR NOT output MATCHES "Collected : ([0-9]+)")
        message(FATAL_ERROR
            "${PROBE} ${workload} ${times} under ${VALGRIND} ended with ${ended}:\n${output}")
    endif()
    set(${result} ${CMAKE_MATCH_1} PARENT_SCOPE)
endfunction()

if(NOT STORE AND NOT EXISTS ${COUNTS})
    message(FATAL_ERROR "${COUNTS} does not exist: tests/perf/accept.sh stores the counts of this compiler")
endif()

set(lines "")
foreach(workload IN LISTS WORKLOADS)
    count_instructions(${workload} ${few} fewCounted)
    count_instructions(${workload} ${many} manyCounted)
    math(EXPR counted "(${manyCounted} - ${fewCounted}) / (${many} - ${few})")
    string(APPEND lines "${workload} ${counted}\n")
    if(STORE)
        continue()
    endif()

    file(STRINGS ${COUNTS} line REGEX "^${workload} [0-9]+$")
    if(NOT line)
        message(FATAL_ERROR "${COUNTS} has no count for ${workload}: tests/perf/accept.sh stores it")
    endif()
    string(REGEX REPLACE "^${workload} " "" stored ${line})
    math(EXPR max "${stored} * (100 + ${tolerance}) / 100")
    message(STATUS "${workload}: ${counted} instructions, stored ${stored}, at most ${max}")
    if(counted GREATER max)
        message(FATAL_ERROR
            "${workload} needs ${counted} instructions instead of ${stored}, more than ${max}. "
            "If that is intended, store it: tests/perf/accept.sh")
    endif()
endforeach()

if(STORE)
    file(WRITE ${COUNTS} "${lines}")
endif()
