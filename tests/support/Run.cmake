# run(<command> [<argument>...]): runs it, leaves what it wrote in <output>, and ends the script if it
# fails.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        string(REPLACE ";" " " command "${ARGN}")
        message(NOTICE "${output}") # as it is: an error's own text is wrapped
        message(FATAL_ERROR "failed (${result}): ${command}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

# The option that selects TOOLCHAIN or, without one, COMPILER, in <compiler>.
if(TOOLCHAIN)
    set(compiler -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
elseif(COMPILER)
    set(compiler -DCMAKE_CXX_COMPILER=${COMPILER})
endif()
