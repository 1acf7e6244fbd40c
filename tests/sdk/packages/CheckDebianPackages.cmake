# Unpacks the Debian packages into <ROOT> and checks their control fields and files.
#
# cmake -DMADE=<their folder> -DROOT=... -DVERSION=... -P CheckDebianPackages.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)

file(REMOVE_RECURSE ${ROOT})
file(MAKE_DIRECTORY ${ROOT})
set(known "")

# expect_field(<package> <field> <pattern>)
function(expect_field package field pattern)
    run(dpkg-deb --field ${MADE}/${package}_${VERSION}_amd64.deb ${field})
    if(NOT output MATCHES "${pattern}")
        message(FATAL_ERROR "${package}: ${field} is '${output}', which does not match '${pattern}'")
    endif()
endfunction()

foreach(package IN ITEMS zol-framework zol-framework-dev zol-framework-dbg)
    expect_field(${package} Package "^${package}\n$")
    expect_field(${package} Version "^${VERSION}\n$")
    run(dpkg-deb --extract ${MADE}/${package}_${VERSION}_amd64.deb ${ROOT}/${package})
    file(GLOB_RECURSE files RELATIVE ${ROOT}/${package} ${ROOT}/${package}/*)
    foreach(file IN LISTS files)
        if(NOT file MATCHES "^usr/(bin|lib|include|share)/")
            message(FATAL_ERROR "${package} would install ${file}")
        endif()
        if(file IN_LIST known)
            message(FATAL_ERROR "${file} is in two packages")
        endif()
    endforeach()
    list(APPEND known ${files})
    file(COPY ${ROOT}/${package}/usr DESTINATION ${ROOT})
endforeach()
foreach(file IN ITEMS usr/lib/zol/Console_r.so usr/lib/zol/Console_r.so.debug
        usr/include/ZOL/Framework/Framework.h)
    if(NOT file IN_LIST known)
        message(FATAL_ERROR "no package has ${file}")
    endif()
endforeach()

# The shared libraries that the modules need.
foreach(needed IN ITEMS libc6 libgcc-s1 libstdc\\+\\+6)
    expect_field(zol-framework Depends "${needed} \\(>= [0-9.]+")
endforeach()
string(REPLACE "." "\\." version ${VERSION})
expect_field(zol-framework-dev Depends "^zol-framework \\(= ${version}\\), libelf1\n$")
expect_field(zol-framework-dbg Depends "^zol-framework \\(= ${version}\\)\n$")
