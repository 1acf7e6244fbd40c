# Checks the control files of the Debian packages, installs them into the folder <ROOT>, and checks where
# their files are.
#
# cmake -DMADE=<their folder> -DROOT=... -DSOURCE=<the tree> -DVERSION=... -P CheckDebianPackages.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/DpkgInFolder.cmake)

set(packages zol-framework zol-framework-dev zol-framework-dbg)
list(TRANSFORM packages REPLACE "(.+)" "${MADE}/\\1_${VERSION}_amd64.deb" OUTPUT_VARIABLE files)
string(REPLACE "." "\\." version ${VERSION})

# expect_field(<package> <field> <pattern>)
function(expect_field package field pattern)
    run(dpkg-deb --field ${MADE}/${package}_${VERSION}_amd64.deb ${field})
    if(NOT output MATCHES "${pattern}")
        message(FATAL_ERROR "${package}: ${field} is '${output}', which does not match '${pattern}'")
    endif()
endfunction()

foreach(package IN LISTS packages)
    expect_field(${package} Package "^${package}\n$")
    expect_field(${package} Version "^${version}\n$")
    expect_field(${package} Maintainer "^ZOL Framework developers <[a-z]+@[a-z-]+\\.invalid>\n$")
endforeach()
foreach(package IN ITEMS zol-framework zol-framework-dev)
    foreach(needed IN ITEMS libc6 libgcc-s1 libstdc\\+\\+6)
        expect_field(${package} Depends "${needed} \\(>= [0-9.]+")
    endforeach()
endforeach()
# Of the back ends that write files.
expect_field(zol-framework Depends "zlib1g \\(>= 1:[0-9.]+")
expect_field(zol-framework-dev Depends "^zol-framework \\(= ${version}\\), .*libelf1(t64)? \\(>= [0-9.]+")
expect_field(zol-framework-dbg Depends "^zol-framework \\(= ${version}\\)\n$")

# Only the package with the module has anything to do when it is installed or removed: the trigger.
foreach(package IN LISTS packages)
    set(control ${ROOT}-control)
    file(REMOVE_RECURSE ${control})
    run(dpkg-deb --control ${MADE}/${package}_${VERSION}_amd64.deb ${control})
    file(GLOB found RELATIVE ${control} ${control}/*)
    set(expected control md5sums)
    if(package STREQUAL "zol-framework")
        list(APPEND expected triggers)
        file(READ ${control}/triggers triggers)
        if(NOT triggers STREQUAL "activate-noawait ldconfig\n")
            message(FATAL_ERROR "the triggers are '${triggers}'")
        endif()
    endif()
    if(NOT found STREQUAL expected)
        message(FATAL_ERROR "${package} has the control files ${found}, expected ${expected}")
    endif()
endforeach()

# dpkg refuses two packages with the same file.
file(REMOVE_RECURSE ${ROOT})
file(MAKE_DIRECTORY ${ROOT}/var/lib/dpkg/info ${ROOT}/var/lib/dpkg/updates)
file(TOUCH ${ROOT}/var/lib/dpkg/status)
dpkg(--install ${files})

file(GLOB_RECURSE installed RELATIVE ${ROOT} ${ROOT}/usr/* ${ROOT}/etc/* ${ROOT}/opt/*)
foreach(file IN LISTS installed)
    if(NOT file MATCHES "^usr/(bin|include|lib|share)/" OR file MATCHES "^usr/lib/[A-Za-z]+_r\\.so")
        message(FATAL_ERROR "a package installs ${file}")
    endif()
endforeach()
foreach(file IN ITEMS
        usr/lib/ZOL_Framework_r.${VERSION}.so
        usr/lib/zol/Console_r.so
        usr/lib/debug/usr/lib/ZOL_Framework_r.${VERSION}.so-gdb.py
        usr/include/ZOL/Framework/Framework.h)
    if(NOT file IN_LIST installed)
        message(FATAL_ERROR "no package has ${file}")
    endif()
endforeach()

run(dpkg-query --admindir=${ROOT}/var/lib/dpkg --listfiles zol-framework-dbg)
string(REPLACE "\n" ";" elsewhere "${output}")
list(FILTER elsewhere EXCLUDE REGEX "^(/\\.|/usr|/usr/lib|/usr/lib/debug.*|/usr/share|/usr/share/doc.*)?$")
if(elsewhere)
    message(FATAL_ERROR "zol-framework-dbg has ${elsewhere}")
endif()

# A back end finds the module, also if the module is not loaded yet.
unset(ENV{LD_LIBRARY_PATH})
run(ldd ${ROOT}/usr/lib/zol/Console_r.so)
if(output MATCHES "not found" OR NOT output MATCHES "ZOL_Framework_r\\.${version}\\.so =>")
    message(FATAL_ERROR "Console needs\n${output}")
endif()

# Each module has its debug information, under its build ID.
foreach(file IN ITEMS bin/zol-backend-check lib/ZOL_Framework_r.${VERSION}.so lib/zol/Console_r.so)
    run(readelf --notes ${ROOT}/usr/${file})
    string(REGEX REPLACE ".*Build ID: ([0-9a-f][0-9a-f])([0-9a-f]+).*" "\\1/\\2.debug" id "${output}")
    if(NOT EXISTS ${ROOT}/usr/lib/debug/.build-id/${id})
        message(FATAL_ERROR "${file} has no debug information")
    endif()
endforeach()

# expect_text(<file> <its text> <text>)
function(expect_text file content text)
    string(FIND "${content}" "${text}" position)
    if(position EQUAL -1)
        message(FATAL_ERROR "${file} does not contain '${text}'")
    endif()
endfunction()

file(READ ${SOURCE}/CHANGELOG.md changes)
string(REGEX REPLACE "\n## ${version}[^\n]*\n" "\n" changes "${changes}")
string(REGEX REPLACE "\n## .*" "" changes "${changes}")
string(REGEX MATCHALL "\n- [^\n]" changes "${changes}")
list(LENGTH changes count)
foreach(package IN LISTS packages)
    set(documents ${ROOT}/usr/share/doc/${package})

    file(READ ${documents}/copyright copyright)
    expect_text(copyright "${copyright}" "Copyright: the developers of ZOL Framework\n")
    expect_text(copyright "${copyright}" "No licence is stated for ZOL Framework")
    foreach(library IN ITEMS libspdlog-dev libfmt-dev libutfcpp-dev libcli11-dev nlohmann-json3-dev)
        file(READ /usr/share/doc/${library}/copyright notices)
        expect_text(copyright "${copyright}" "\n${library}\n\n${notices}")
    endforeach()

    run(gzip --decompress --stdout ${documents}/changelog.gz)
    file(WRITE ${ROOT}-changelog "${output}")
    # One entry for each of CHANGELOG.md.
    string(REGEX MATCHALL "\n  \\* [^\n]" entries "${output}")
    list(LENGTH entries found)
    if(NOT found EQUAL count)
        message(FATAL_ERROR "${package}: the changelog has ${found} entries, CHANGELOG.md has ${count}")
    endif()
    # Warnings are in the output too.
    run(dpkg-parsechangelog --file ${ROOT}-changelog --show-field Version)
    if(NOT output STREQUAL "${VERSION}\n")
        message(FATAL_ERROR "${package}: dpkg-parsechangelog says '${output}'")
    endif()
    # Compressed as Debian asks for, without a time.
    run(sh -c "gzip -9n <${ROOT}-changelog | cmp - ${documents}/changelog.gz")
endforeach()
