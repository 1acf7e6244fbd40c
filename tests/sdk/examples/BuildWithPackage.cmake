# Builds the examples as projects of their own against the installed package, and runs two-modules.
#
# cmake -DEXAMPLES=<folder>;... -DPACKAGE=<where it is installed> -DWORK=... -DGENERATOR=...
#       -DTOOLCHAIN=... -DCOMPILER=... -DEMULATOR=... -P BuildWithPackage.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)

file(REMOVE_RECURSE ${WORK})
foreach(example IN LISTS EXAMPLES)
    cmake_path(GET example FILENAME name)
    run(${CMAKE_COMMAND} -S ${example} -B ${WORK}/${name} -G ${GENERATOR} ${compiler}
        -DCMAKE_PREFIX_PATH=${PACKAGE})
    run(${CMAKE_COMMAND} --build ${WORK}/${name})
    if(name STREQUAL "two-modules")
        set(file ${example}/packages.log)
    endif()
endforeach()

set(host ${WORK}/two-modules/TwoModulesHost)
if(EMULATOR)
    string(APPEND host .exe)
    set(ENV{WINEPATH} "Z:${PACKAGE}/bin")
endif()
run(${EMULATOR} ${host} ${file})
if(NOT output MATCHES "example.reader has a channel of Console")
    message(FATAL_ERROR "${host} wrote\n${output}")
endif()
