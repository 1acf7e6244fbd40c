# Builds the modules or the framework with another compiler or other flags, copies the result and
# the other side from the tree into one folder, and runs tests and examples/two-modules there.
#
# cmake -DSIDE=modules|framework -DBIN=<the tree's binaries> -DPACKAGE=<the installed SDK>
#       -DWORK=... -DGENERATOR=... -DCOMPILER=<compiler, or toolchain file> -DSTANDARD=17|20|23
#       -DFLAGS=... -DEMULATOR=... -P RunMixedBuild.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)

set(build ${WORK}/build)
set(together ${WORK}/together)
set(modules CapturingModule ModuleA ModuleB TwoModulesReader TwoModulesAuditor
    Good NullBackend Chatty ThrowingEntry NoEntryPoint Sharing Versioned)
if(NOT EMULATOR) # Windows has no undefined symbols
    list(APPEND modules NeedsSeven)
endif()

if(COMPILER MATCHES "\\.cmake$")
    set(compiler -DCMAKE_TOOLCHAIN_FILE=${COMPILER})
else()
    set(compiler -DCMAKE_CXX_COMPILER=${COMPILER})
endif()
set(options -G ${GENERATOR} ${compiler} -DCMAKE_CXX_STANDARD=${STANDARD})
set(ENV{CXXFLAGS} ${FLAGS}) # added to the flags of a toolchain file

if(SIDE STREQUAL "modules")
    run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${build} ${options}
        -DCMAKE_PREFIX_PATH=${PACKAGE})
    run(${CMAKE_COMMAND} --build ${build} --config Debug --target ${modules})
else()
    run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/../../.. -B ${build} ${options}
        -DZOL_BUILD_TESTS=OFF -DZOL_BUILD_EXAMPLES=OFF -DZOL_BUILD_BACKENDS=OFF
        -DZOL_BUILD_TOOLS=OFF)
    run(${CMAKE_COMMAND} --build ${build} --config Debug --target ZOL_Framework)
endif()

# copy_binaries(<folder> <file name without extension>...): each must exist exactly once.
function(copy_binaries folder)
    foreach(name IN LISTS ARGN)
        file(GLOB file ${folder}/${name} ${folder}/${name}.exe ${folder}/${name}.so ${folder}/${name}.dll)
        list(LENGTH file count)
        if(NOT count EQUAL 1)
            message(FATAL_ERROR "not one file ${name} in ${folder}: ${file}")
        endif()
        file(COPY ${file} DESTINATION ${together})
    endforeach()
endfunction()

configuration_folder(built ${build}/bin Debug)

# Each side comes from one folder only, so that it cannot replace the other.
list(TRANSFORM modules APPEND "_r" OUTPUT_VARIABLE moduleFiles)
list(TRANSFORM moduleFiles REPLACE "^Versioned_r$" "Versioned_r.1.2")
set(framework ZOL_Framework_r.2.0.8.129)
file(REMOVE_RECURSE ${together})
copy_binaries(${BIN} zol_tests zol_testing_tests zol_abi_tests TwoModulesHost Console_r)
if(SIDE STREQUAL "modules")
    copy_binaries(${built} ${moduleFiles})
    copy_binaries(${BIN} ${framework})
else()
    copy_binaries(${BIN} ${moduleFiles})
    copy_binaries(${built} ${framework})
endif()
if(EMULATOR)
    copy_binaries(${BIN} libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
endif()

# run_together(<program> <argument>...)
function(run_together program)
    if(EMULATOR)
        string(APPEND program .exe)
    endif()
    run(${CMAKE_COMMAND} -E chdir ${together} ${EMULATOR} ${together}/${program} ${ARGN})
    message(STATUS "${program}:\n${output}")
endfunction()

# For mingw-w64, clang exports no type information: every module has its own.
set(exports "")
if(EMULATOR AND SIDE STREQUAL "framework" AND COMPILER MATCHES "clang")
    set(exports exports.windows-clang.txt)
endif()
run_together(zol_tests --gtest_brief=1)
# With debug containers, g++ creates unique symbols that keep a module loaded.
run_together(zol_testing_tests --gtest_brief=1
    --gtest_filter=-CapturedModules.AModuleWhoseKitWasNotUsedIsUnloaded)
run_together(zol_abi_tests --gtest_brief=1 --gtest_filter=-Exports.BackEndsExportOnlyTheirEntryPoint
    ${exports})
# The host compares what it and the modules see of every service, and fails if they differ.
run_together(TwoModulesHost ${CMAKE_CURRENT_LIST_DIR}/../../../examples/two-modules/packages.log)
