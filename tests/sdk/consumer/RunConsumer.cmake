# Configures, builds and runs the consumer project against the installed package.
#
# cmake -DPACKAGE=<the installed SDK> -DWORK=... -DGENERATOR=... -DTOOLCHAIN=... -DCOMPILER=...
#       -DEMULATOR=... -P RunConsumer.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)

set(build ${WORK}/build)
file(REMOVE_RECURSE ${WORK})

if(TOOLCHAIN)
    set(compiler -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
else()
    set(compiler -DCMAKE_CXX_COMPILER=${COMPILER})
endif()
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${build} -G ${GENERATOR} ${compiler}
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH=${PACKAGE})
run(${CMAKE_COMMAND} --build ${build})

# expect_output(<program> <text>): runs a program of the consumer project.
function(expect_output name expected)
    if(EMULATOR)
        run(${EMULATOR} ${build}/${name}.exe)
    else()
        run(${build}/${name})
    endif()
    string(REPLACE "\r\n" "\n" output "${output}")
    if(NOT output STREQUAL expected)
        message(FATAL_ERROR "${name} wrote\n${output}instead of\n${expected}")
    endif()
endfunction()

# The plug-in and the modules are beside the programs, the framework is in the package.
if(EMULATOR)
    set(ENV{WINEPATH} "Z:${PACKAGE}/bin")
else()
    set(ENV{LD_LIBRARY_PATH} ${build})
endif()
expect_output(consumer "40 from the program\n30 from the module\n60 x=1\n")
if(EMULATOR)
    expect_output(registry_consumer "42\n")
endif()

# The package must not contain targets or expressions that only its build uses.
file(GLOB_RECURSE targetFiles ${PACKAGE}/ZOL_FrameworkTargets*.cmake)
if(NOT targetFiles)
    message(FATAL_ERROR "the package has no file of targets")
endif()
foreach(file IN LISTS targetFiles)
    file(STRINGS ${file} traces REGEX "zol_|LINK_ONLY|BUILD_INTERFACE|INSTALL_INTERFACE")
    if(traces)
        message(FATAL_ERROR "${file} refers to the build:\n${traces}")
    endif()
endforeach()
