# Configures, builds and runs the consumer project against the installed package, or with the sources
# as a part of it.
#
# cmake -DPACKAGE=<the installed SDK>|-DFETCHED=<the sources> -DWORK=... -DCONFIG=... -DGENERATOR=...
#       -DTOOLCHAIN=... -DCOMPILER=... -DOPTIONS=<more options of cmake> -DEMULATOR=...
#       -P RunConsumer.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)

set(build ${WORK}/build)
file(REMOVE_RECURSE ${WORK})

if(FETCHED)
    set(source -DFETCHED=${FETCHED})
else()
    set(source -DCMAKE_PREFIX_PATH=${PACKAGE})
endif()
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${build} -G ${GENERATOR} ${compiler} ${source}
    -DCMAKE_BUILD_TYPE=${CONFIG})
run(${CMAKE_COMMAND} --build ${build} --config ${CONFIG})
configuration_folder(bin ${build} ${CONFIG})

# run_program(<name>): runs a program of the consumer project and sets <output>.
function(run_program name)
    run(${EMULATOR} ${bin}/${name}${exe})
    string(REPLACE "\r\n" "\n" output "${output}")
    set(output "${output}" PARENT_SCOPE)
endfunction()

# expect_output(<program> <text>)
function(expect_output name expected)
    run_program(${name})
    if(NOT output STREQUAL expected)
        message(FATAL_ERROR "${name} wrote\n${output}instead of\n${expected}")
    endif()
endfunction()

unset(ENV{LD_LIBRARY_PATH})
if(FETCHED)
    # Everything is in one folder.
    expect_output(consumer "40 from the program\n30 from the module\n30 from the module\n60 x=1\n60 x=1\n")

    file(GLOB modules RELATIVE ${bin} ${bin}/ZOL_Framework_*.so ${bin}/ZOL_Framework_*.dll)
    if(NOT modules MATCHES "^ZOL_Framework_r\\.[0-9.]+\\.(so|dll)$")
        message(FATAL_ERROR "the framework is built as '${modules}'")
    endif()

    # Installing the project installs nothing of the framework, unless asked for.
    run(${CMAKE_COMMAND} --install ${build} --config ${CONFIG} --prefix ${WORK}/without)
    file(GLOB_RECURSE installed RELATIVE ${WORK}/without ${WORK}/without/*)
    if(NOT installed MATCHES "^bin/consumer(.exe)?$")
        message(FATAL_ERROR "installing the project installs ${installed}")
    endif()
    run(${CMAKE_COMMAND} -DZOL_INSTALL=ON ${build})
    run(${CMAKE_COMMAND} --install ${build} --config ${CONFIG} --component Development --prefix ${WORK}/with)
    if(NOT EXISTS ${WORK}/with/lib/cmake/ZOL_Framework/ZOL_FrameworkConfig.cmake)
        message(FATAL_ERROR "ZOL_INSTALL does not install the SDK")
    endif()
    return()
endif()

# The framework is in the package, and finds the ready-made back ends there.
if(exe)
    find_libraries_in(${PACKAGE}/bin)
endif()
run_program(console_consumer)
if(NOT output MATCHES " ERROR .consumer. from the program\n$")
    message(FATAL_ERROR "Console wrote '${output}'")
endif()

# The plug-ins and the modules are beside the programs.
if(NOT exe)
    find_libraries_in(${bin})
endif()
expect_output(consumer "40 from the program\n30 from the module\n30 from the module\n60 x=1\n60 x=1\n")
if(exe)
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
