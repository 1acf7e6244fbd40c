# Builds the examples as projects of their own against the installed package, and runs two-modules.
#
# cmake -DEXAMPLES=<folder>;... -DPACKAGE=<where it is installed> -DWORK=... -DGENERATOR=...
#       -DTOOLCHAIN=... -DCOMPILER=... -DOPTIONS=... -DCONFIG=... -DEMULATOR=... -P BuildWithPackage.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)

file(REMOVE_RECURSE ${WORK})
foreach(example IN LISTS EXAMPLES)
    cmake_path(GET example FILENAME name)
    run(${CMAKE_COMMAND} -S ${example} -B ${WORK}/${name} -G ${GENERATOR} ${compiler}
        -DCMAKE_PREFIX_PATH=${PACKAGE} -DCMAKE_BUILD_TYPE=${CONFIG})
    run(${CMAKE_COMMAND} --build ${WORK}/${name} --config ${CONFIG})
    if(name STREQUAL "two-modules")
        set(file ${example}/packages.log)
    endif()
endforeach()

configuration_folder(bin ${WORK}/two-modules ${CONFIG})
set(host ${bin}/TwoModulesHost${exe})
if(exe)
    find_libraries_in(${PACKAGE}/bin)
endif()
run(${EMULATOR} ${host} ${file})
if(NOT output MATCHES "example.reader has a channel of Console")
    message(FATAL_ERROR "${host} wrote\n${output}")
endif()
