# Compiles and runs a program with only the flags of pkg-config.
#
# cmake -DPACKAGE=... -DWORK=... -DPKG_CONFIG=... -DCOMPILER=... -DEMULATOR=... -DVERSION=...
#       -P CheckPkgConfig.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)

# ask(<module> <option>...): sets <flags>.
function(ask module)
    set(ENV{PKG_CONFIG_LIBDIR} "${PACKAGE}/lib/pkgconfig")
    run(${PKG_CONFIG} ${ARGN} ${module})
    separate_arguments(flags UNIX_COMMAND "${output}")
    set(flags "${flags}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
ask(ZOL_Framework --modversion)
if(NOT flags STREQUAL "${VERSION}\n" AND NOT flags STREQUAL VERSION)
    message(FATAL_ERROR "pkg-config has version '${flags}', expected ${VERSION}")
endif()

ask(ZOL_Framework --cflags --libs)
run(${COMPILER} -std=c++17 ${CMAKE_CURRENT_LIST_DIR}/pkgconfig/Program.cpp -o ${WORK}/program.exe
    ${flags})
if(exe)
    find_libraries_in("${PACKAGE}/bin")
else()
    find_libraries_in("${PACKAGE}/lib")
endif()
run(${EMULATOR} ${WORK}/program.exe)
string(STRIP "${output}" output)
if(NOT output STREQUAL "counted to two: 1")
    message(FATAL_ERROR "the program wrote '${output}'")
endif()

# A shared library links only if no symbol is missing.
if(EMULATOR)
    ask(ZOL_RegistryAccess --cflags --libs)
    run(${COMPILER} -std=c++17 -shared ${CMAKE_CURRENT_LIST_DIR}/../consumer/RegistryModule.cpp
        -o ${WORK}/registry.dll ${flags})
endif()
