# Runs FUZZER for RUNS inputs, reproducibly: from SEEDS, with an empty WORK and, if the system allows
# it, at fixed addresses. After a failure prints how to reproduce it.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/corpus)
set(at_fixed_addresses setarch --addr-no-randomize)
execute_process(COMMAND ${at_fixed_addresses} true RESULT_VARIABLE result OUTPUT_QUIET ERROR_QUIET)
if(NOT result STREQUAL "0")
    set(at_fixed_addresses "")
endif()
execute_process(
    COMMAND ${at_fixed_addresses} ${FUZZER}
        -runs=${RUNS} -seed=1 -max_len=400 -reload=0 -verbosity=0 -print_final_stats=1
        -artifact_prefix=${WORK}/ ${WORK}/corpus ${SEEDS}
    RESULT_VARIABLE result)
if(NOT result STREQUAL "0")
    file(GLOB inputs ${WORK}/crash-* ${WORK}/leak-* ${WORK}/timeout-* ${WORK}/oom-*)
    message(FATAL_ERROR "The fuzzer ended with ${result}. To see it again: ${FUZZER} ${inputs}")
endif()
