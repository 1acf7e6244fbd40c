# The bill of materials lists every dependency with a version and a licence and agrees with the
# compiled headers.
#
# cmake -DPACKAGE=... -DVERSION=... -DWINDOWS=0|1 -DBOOST_HEADER=<boost/version.hpp>
#       -DSPDLOG_HEADER=<spdlog/version.h> -P CheckSbom.cmake

cmake_minimum_required(VERSION 3.25)

file(READ "${PACKAGE}/share/zol-framework/ZOL_Framework.spdx.json" sbom)
string(JSON spdx GET "${sbom}" spdxVersion)
if(NOT spdx STREQUAL "SPDX-2.3")
    message(FATAL_ERROR "the bill of materials has version '${spdx}'")
endif()

set(names "")
string(JSON count LENGTH "${sbom}" packages)
math(EXPR last "${count} - 1")
foreach(index RANGE ${last})
    string(JSON name GET "${sbom}" packages ${index} name)
    string(JSON version_of_${name} GET "${sbom}" packages ${index} versionInfo)
    string(JSON licence_of_${name} GET "${sbom}" packages ${index} licenseDeclared)
    string(JSON id GET "${sbom}" packages ${index} SPDXID)
    string(JSON related GET "${sbom}" relationships ${index} relatedSpdxElement)
    if(NOT id STREQUAL related)
        message(FATAL_ERROR "${name} has no relationship to the framework")
    endif()
    list(APPEND names ${name})
endforeach()

# expect_listed(<name> <pattern of the version> <licence>)
function(expect_listed name pattern licence)
    if(NOT version_of_${name} MATCHES "${pattern}" OR NOT licence_of_${name} STREQUAL licence)
        message(FATAL_ERROR "${name} is listed with version '${version_of_${name}}' and licence "
            "'${licence_of_${name}}' in place of '${pattern}' and '${licence}'")
    endif()
    list(REMOVE_ITEM names ${name})
    set(names "${names}" PARENT_SCOPE)
endfunction()

# header_number(<result> <header> <macro>): read in another way than by WriteSbom.cmake.
function(header_number result header macro)
    file(STRINGS ${header} line REGEX "^# *define +${macro} ")
    if(NOT line MATCHES "${macro} +\"?([0-9_]+)")
        message(FATAL_ERROR "${header} has no ${macro}")
    endif()
    set(${result} ${CMAKE_MATCH_1} PARENT_SCOPE)
endfunction()

header_number(boost ${BOOST_HEADER} BOOST_LIB_VERSION)
string(REPLACE "_" "\\." boost ${boost})
header_number(major ${SPDLOG_HEADER} SPDLOG_VER_MAJOR)
header_number(minor ${SPDLOG_HEADER} SPDLOG_VER_MINOR)
header_number(patch ${SPDLOG_HEADER} SPDLOG_VER_PATCH)

set(gccLicence "GPL-3.0-or-later WITH GCC-exception-3.1")
expect_listed(ZOL_Framework "^${VERSION}$" NOASSERTION)
expect_listed(Boost "^${boost}\\." BSL-1.0)
expect_listed(spdlog "^${major}\\.${minor}\\.${patch}$" MIT)
expect_listed(CLI11 "^[0-9]+\\.[0-9]+\\.[0-9]+$" BSD-3-Clause)
expect_listed(nlohmann-json "^[0-9]+\\.[0-9]+\\.[0-9]+$" MIT)
expect_listed(UTF8-CPP "^[0-9]+\\.[0-9]+\\.[0-9]+-" BSL-1.0)
expect_listed(fmt "^[0-9]+\\.[0-9]+\\.[0-9]+$" MIT)
expect_listed(libstdc++ "[0-9]+\\.[0-9]+" ${gccLicence})
expect_listed(libgcc "[0-9]+\\.[0-9]+" ${gccLicence})
if(WINDOWS)
    expect_listed(winpthreads "[0-9]+\\.[0-9]+" "MIT AND BSD-3-Clause")
    expect_listed(mingw-w64-runtime "[0-9]+\\.[0-9]+" ZPL-2.1)
else()
    expect_listed(glibc "[0-9]+\\.[0-9]+" LGPL-2.1-or-later)
    expect_listed(libelf "[0-9]+\\.[0-9]+" "LGPL-3.0-or-later OR GPL-2.0-or-later")
endif()
if(names)
    message(FATAL_ERROR "listed, but unknown to this test: ${names}")
endif()
