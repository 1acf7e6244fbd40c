# Removes the packages that CheckDebianPackages.cmake has installed into <ROOT>.
#
# cmake -DROOT=... -P RemoveDebianPackages.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/DpkgInFolder.cmake)

dpkg(--remove zol-framework-dbg zol-framework-dev zol-framework)
file(GLOB_RECURSE left LIST_DIRECTORIES TRUE RELATIVE ${ROOT} ${ROOT}/*)
list(FILTER left EXCLUDE REGEX "^var(/lib(/dpkg(/.*)?)?)?$")
if(left)
    message(FATAL_ERROR "removing the packages leaves ${left}")
endif()
# dpkg keeps a package that has something left to purge.
run(dpkg-query --admindir=${ROOT}/var/lib/dpkg --show --showformat "\${Package} \${db:Status-Status}\\n")
if(output)
    message(FATAL_ERROR "dpkg still lists ${output}")
endif()
