# Builds one side of the boundary in another way, puts it beside the other side as the tree built
# it, and runs the tests of what all modules share, and examples/two-modules, on the two.
#
# cmake -DSIDE=modules|framework -DBIN=<what the tree built> -DPACKAGE=<where it is installed>
#       -DWORK=... -DGENERATOR=... -DCOMPILER=<compiler, or toolchain file> -DSTANDARD=17|20|23
#       -DFLAGS=... -DEMULATOR=... -P RunOtherBuild.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)

set(build ${WORK}/build)
set(meeting ${WORK}/meeting)
set(modules ModuleA ModuleB TwoModulesReader TwoModulesAuditor
    Good NullBackend Chatty ThrowingEntry NoEntryPoint Sharing Versioned)

if(COMPILER MATCHES "\\.cmake$")
    set(compiler -DCMAKE_TOOLCHAIN_FILE=${COMPILER})
else()
    set(compiler -DCMAKE_CXX_COMPILER=${COMPILER})
endif()
set(options -G ${GENERATOR} ${compiler} -DCMAKE_CXX_STANDARD=${STANDARD})
set(ENV{CXXFLAGS} ${FLAGS}) # beside those of a toolchain file, not in their place

if(SIDE STREQUAL "modules")
    run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${build} ${options}
        -DCMAKE_PREFIX_PATH=${PACKAGE})
    run(${CMAKE_COMMAND} --build ${build} --target ${modules})
else()
    run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/../../.. -B ${build} ${options}
        -DZOL_BUILD_TESTS=OFF -DZOL_BUILD_EXAMPLES=OFF -DZOL_BUILD_BACKENDS=OFF)
    run(${CMAKE_COMMAND} --build ${build} --target ZOL_Framework)
endif()

# place(<folder> <file name without extension>...): each must be there, under one extension or none.
function(place folder)
    foreach(name IN LISTS ARGN)
        file(GLOB file ${folder}/${name} ${folder}/${name}.exe ${folder}/${name}.so ${folder}/${name}.dll)
        list(LENGTH file count)
        if(NOT count EQUAL 1)
            message(FATAL_ERROR "not one file ${name} in ${folder}: ${file}")
        endif()
        file(COPY ${file} DESTINATION ${meeting})
    endforeach()
endfunction()

# Each side from one place alone, so that neither can stand in for the other.
list(TRANSFORM modules APPEND "_r" OUTPUT_VARIABLE moduleFiles)
list(TRANSFORM moduleFiles REPLACE "^Versioned_r$" "Versioned_r.1.2")
set(framework ZOL_Framework_r.2.0.8.129)
file(REMOVE_RECURSE ${meeting})
place(${BIN} zol_tests zol_boundary_tests TwoModulesHost Console_r)
if(SIDE STREQUAL "modules")
    place(${build}/bin ${moduleFiles})
    place(${BIN} ${framework})
else()
    place(${BIN} ${moduleFiles})
    place(${build}/bin ${framework})
endif()
if(EMULATOR)
    place(${BIN} libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
endif()

function(run_here program)
    if(EMULATOR)
        string(APPEND program .exe)
    endif()
    run(${CMAKE_COMMAND} -E chdir ${meeting} ${EMULATOR} ${meeting}/${program} ${ARGN})
    message(STATUS "${program}:\n${output}")
endfunction()

# For mingw-w64, clang exports no type information: every module has its own.
if(EMULATOR AND SIDE STREQUAL "framework" AND COMPILER MATCHES "clang")
    set(ENV{ZOL_EXPORTS_LIST} exports.windows-clang.txt)
endif()
run_here(zol_tests --gtest_brief=1)
run_here(zol_boundary_tests --gtest_brief=1 --gtest_filter=-Exports.OfABackEndAreItsEntryPointAlone)
# The host compares what it and the modules see of every service, and fails if they differ.
run_here(TwoModulesHost ${CMAKE_CURRENT_LIST_DIR}/../../../examples/two-modules/packages.log)
