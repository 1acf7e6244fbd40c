# Installs the runtime component as on a machine that cannot run the compiler, for example because the
# variables of a developer prompt are missing: without a search path, and no program is run but objcopy.
#
# cmake -DBUILD=... -DCONFIG=... -DPACKAGE=<where it is installed> -DOBJCOPY=<objcopy, or empty>
#       -P InstallWithoutCompiler.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)

set(trace ${PACKAGE}.trace)
file(REMOVE_RECURSE ${PACKAGE})
foreach(variable IN ITEMS INCLUDE LIB LIBPATH)
    unset(ENV{${variable}})
endforeach()
set(ENV{PATH} "")
run(${CMAKE_COMMAND} --trace-expand --trace-format=json-v1 --trace-redirect=${trace}
    -DCMAKE_INSTALL_PREFIX=${PACKAGE} -DCMAKE_INSTALL_CONFIG_NAME=${CONFIG}
    -DCMAKE_INSTALL_COMPONENT=Runtime -P ${BUILD}/cmake_install.cmake)

file(STRINGS ${trace} written ENCODING UTF-8 REGEX "\"WRITE\",\"[^\"]*/ZOL_Framework\\.spdx\\.json\"")
if(NOT written)
    message(FATAL_ERROR "${trace} does not show how the bill of materials is written")
endif()
file(STRINGS ${trace} processes ENCODING UTF-8 REGEX "\"cmd\":\"execute_process\"")
foreach(process IN LISTS processes)
    string(JSON program GET "${process}" args 1)
    if(NOT OBJCOPY OR NOT program STREQUAL OBJCOPY)
        message(FATAL_ERROR "the installation runs ${program}")
    endif()
endforeach()
