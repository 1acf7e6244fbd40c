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

# The options that select TOOLCHAIN or, without one, COMPILER, and the text OPTIONS, in <compiler>.
separate_arguments(options NATIVE_COMMAND "${OPTIONS}")
if(TOOLCHAIN)
    set(compiler -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} ${options})
elseif(COMPILER)
    set(compiler -DCMAKE_CXX_COMPILER=${COMPILER} ${options})
endif()

# The suffix of programs, in <exe>.
set(exe "")
if(EMULATOR OR CMAKE_HOST_WIN32)
    set(exe .exe)
endif()

# configuration_folder(<result> <folder> <configuration>): where GENERATOR puts what it builds if this is
# the output folder.
function(configuration_folder result folder configuration)
    if(GENERATOR MATCHES "Multi-Config|Visual Studio")
        string(APPEND folder /${configuration})
    endif()
    set(${result} ${folder} PARENT_SCOPE)
endfunction()

# find_libraries_in(<folder>): the programs that this script runs find the libraries there.
function(find_libraries_in folder)
    cmake_path(NATIVE_PATH folder folder)
    if(EMULATOR)
        set(ENV{WINEPATH} "Z:${folder}")
    elseif(CMAKE_HOST_WIN32)
        set(ENV{PATH} "${folder};$ENV{PATH}")
    else()
        set(ENV{LD_LIBRARY_PATH} "${folder}")
    endif()
endfunction()
