# Writes <destination>/ZOL_Framework.spdx.json, the bill of materials as an SPDX document. Runs while
# the package is installed, because it reads the versions of the compiler and its libraries.
# cmake/Install.cmake sets the variables.

# header_macros(<result> <header> <macro>...): the values of the macros for the compiler.
function(header_macros result header)
    set(text "#include <${header}>\n")
    foreach(macro IN LISTS ARGN)
        string(APPEND text "zol_value ${macro}\n")
    endforeach()
    file(WRITE ${scratch}/macros.cpp "${text}")
    set(folders ${includeFolders})
    list(FILTER folders EXCLUDE REGEX "^$")
    list(TRANSFORM folders PREPEND -I)
    if(compilerIsMsvc)
        set(preprocess /nologo /EP /TP)
    else()
        set(preprocess -E -P -std=c++17)
    endif()
    execute_process(COMMAND ${compiler} ${preprocess} ${folders} ${scratch}/macros.cpp
        OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE failed)
    string(REGEX MATCHALL "zol_value [0-9]+" values "${output}")
    list(TRANSFORM values REPLACE "zol_value " "")
    list(LENGTH values found)
    list(LENGTH ARGN wanted)
    if(failed OR NOT found EQUAL wanted)
        message(FATAL_ERROR "${header} does not define the version of its library\n${errors}")
    endif()
    set(${result} ${values} PARENT_SCOPE)
endfunction()

# package_version(<result> <file>): the version of the Debian package of a file, or empty.
function(package_version result file)
    set(${result} "" PARENT_SCOPE)
    file(REAL_PATH ${file} path)
    find_program(dpkgQuery dpkg-query NO_CACHE)
    if(dpkgQuery)
        # With a merged /usr, some packages list /lib for files in /usr/lib.
        string(REGEX REPLACE "^/usr" "" unmerged ${path})
        foreach(place IN ITEMS ${path} ${unmerged})
            execute_process(COMMAND ${dpkgQuery} --search ${place}
                OUTPUT_VARIABLE owner ERROR_QUIET RESULT_VARIABLE failed)
            if(NOT failed)
                string(REGEX REPLACE ": /.*" "" owner "${owner}")
                execute_process(COMMAND ${dpkgQuery} --show --showformat=\${Version} ${owner}
                    OUTPUT_VARIABLE version COMMAND_ERROR_IS_FATAL ANY)
                set(${result} ${version} PARENT_SCOPE)
                return()
            endif()
        endforeach()
    endif()
endfunction()

# owner_version(<result> <file of the compiler's libraries>): the version of its Debian package, or of
# the compiler if it belongs to no package.
function(owner_version result file)
    separate_arguments(flags UNIX_COMMAND "${linkFlags}")
    execute_process(COMMAND ${compiler} ${flags} -print-file-name=${file}
        OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    package_version(version ${path})
    if(NOT version)
        execute_process(COMMAND ${compiler} -dumpfullversion
            OUTPUT_VARIABLE version OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        set(version "of compiler ${version}")
    endif()
    set(${result} ${version} PARENT_SCOPE)
endfunction()

# set_texts(<variable with a JSON object> <key> <text>...)
function(set_texts variable)
    set(object "${${variable}}")
    set(members ${ARGN})
    while(members)
        list(POP_FRONT members key text)
        string(JSON object SET "${object}" ${key} "\"${text}\"")
    endwhile()
    set(${variable} "${object}" PARENT_SCOPE)
endfunction()

# append(<variable with a JSON array> <value>)
function(append variable value)
    string(JSON length LENGTH "${${variable}}")
    string(JSON array SET "${${variable}}" ${length} "${value}")
    set(${variable} "${array}" PARENT_SCOPE)
endfunction()

set(packages "[]")
set(relationships "[]")

# add_package(<name> <version> <licence> <supplier> <relationship of the framework to it> <comment>)
function(add_package package packageVersion licence supplier relationship comment)
    string(REGEX REPLACE "[^A-Za-z0-9.-]" "-" id "SPDXRef-${package}")
    set(object "{ \"filesAnalyzed\": false }")
    set_texts(object SPDXID "${id}" name "${package}" versionInfo "${packageVersion}"
        supplier "${supplier}" downloadLocation NOASSERTION licenseConcluded "${licence}"
        licenseDeclared "${licence}" copyrightText NOASSERTION comment "${comment}")
    append(packages "${object}")

    set(from SPDXRef-ZOL-Framework)
    if(relationship STREQUAL "DESCRIBES")
        set(from SPDXRef-DOCUMENT)
    endif()
    set(object "{}")
    set_texts(object
        spdxElementId ${from} relationshipType ${relationship} relatedSpdxElement "${id}")
    append(relationships "${object}")
    set(packages "${packages}" PARENT_SCOPE)
    set(relationships "${relationships}" PARENT_SCOPE)
endfunction()

set(others NOASSERTION)
add_package(${name} ${version} NOASSERTION "Organization: ZOL Framework developers" DESCRIBES
    "The shared module, its back ends and what is needed to build with them")

header_macros(boost boost/version.hpp BOOST_VERSION)
math(EXPR major "${boost} / 100000")
math(EXPR minor "${boost} / 100 % 1000")
math(EXPR patch "${boost} % 100")
add_package(Boost ${major}.${minor}.${patch} BSL-1.0 ${others} CONTAINS
    "Thread, Core and Atomic, compiled into the module")

if(backends)
    header_macros(spdlog spdlog/version.h SPDLOG_VER_MAJOR SPDLOG_VER_MINOR SPDLOG_VER_PATCH)
    list(JOIN spdlog "." spdlog)
    add_package(spdlog ${spdlog} MIT ${others} CONTAINS "Compiled into the back ends")

    header_macros(fmt fmt/core.h FMT_VERSION)
    math(EXPR major "${fmt} / 10000")
    math(EXPR minor "${fmt} / 100 % 100")
    math(EXPR patch "${fmt} % 100")
    add_package(fmt ${major}.${minor}.${patch} MIT ${others} CONTAINS "Compiled into the back ends")

    # Its headers do not name their version.
    find_file(utf8Header utf8.h PATHS ${includeFolders} NO_DEFAULT_PATH NO_CACHE REQUIRED)
    package_version(libraryVersion ${utf8Header})
    if(NOT libraryVersion)
        set(libraryVersion NOASSERTION)
    endif()
    add_package(UTF8-CPP ${libraryVersion} BSL-1.0 ${others} CONTAINS "Compiled into the back ends")
endif()

if(tools)
    header_macros(cli CLI/Version.hpp CLI11_VERSION_MAJOR CLI11_VERSION_MINOR CLI11_VERSION_PATCH)
    list(JOIN cli "." cli)
    add_package(CLI11 ${cli} BSD-3-Clause ${others} CONTAINS "Compiled into zol-backend-check")
    header_macros(json nlohmann/json.hpp NLOHMANN_JSON_VERSION_MAJOR NLOHMANN_JSON_VERSION_MINOR
        NLOHMANN_JSON_VERSION_PATCH)
    list(JOIN json "." json)
    add_package(nlohmann-json ${json} MIT ${others} CONTAINS "Compiled into zol-backend-check")
endif()

set(gccLicence "GPL-3.0-or-later WITH GCC-exception-3.1")
if(mingw)
    owner_version(libraryVersion libstdc++-6.dll)
    add_package("libstdc++" ${libraryVersion} ${gccLicence} ${others} DYNAMIC_LINK
        "Shipped beside the module")
    owner_version(libraryVersion libgcc_s_seh-1.dll)
    add_package(libgcc ${libraryVersion} ${gccLicence} ${others} DYNAMIC_LINK
        "Shipped beside the module")
    owner_version(libraryVersion libwinpthread-1.dll)
    add_package(winpthreads ${libraryVersion} "MIT AND BSD-3-Clause" ${others} DYNAMIC_LINK
        "Shipped beside the module")
    owner_version(libraryVersion libmingw32.a)
    add_package(mingw-w64-runtime ${libraryVersion} ZPL-2.1 ${others} STATIC_LINK
        "Start-up code of each module; some of its files are under other licences")
elseif(compilerIsMsvc)
    header_macros(libraryVersion yvals_core.h _MSVC_STL_UPDATE)
    add_package(visual-cxx-runtime ${libraryVersion} NOASSERTION ${others} DYNAMIC_LINK
        "Not shipped")
else()
    owner_version(libraryVersion libstdc++.so.6)
    add_package("libstdc++" ${libraryVersion} ${gccLicence} ${others} DYNAMIC_LINK "Not shipped")
    owner_version(libraryVersion libgcc_s.so.1)
    add_package(libgcc ${libraryVersion} ${gccLicence} ${others} DYNAMIC_LINK "Not shipped")
    owner_version(libraryVersion libc.so.6)
    add_package(glibc ${libraryVersion} LGPL-2.1-or-later ${others} DYNAMIC_LINK "Not shipped")
    if(tools)
        owner_version(libraryVersion libelf.so.1)
        add_package(libelf ${libraryVersion} "LGPL-3.0-or-later OR GPL-2.0-or-later" ${others}
            DYNAMIC_LINK "Not shipped; zol-backend-check needs it")
    endif()
endif()

string(TIMESTAMP created UTC)
# Documents with different contents have different names.
string(UUID uuid NAMESPACE 6ba7b811-9dad-11d1-80b4-00c04fd430c8 TYPE SHA1
    NAME "${platform} ${created} ${packages}")
set(creation "{ \"creators\": [\"Organization: ZOL Framework developers\"] }")
set_texts(creation created "${created}")
set(sbom "{}")
set_texts(sbom spdxVersion SPDX-2.3 dataLicense CC0-1.0 SPDXID SPDXRef-DOCUMENT
    name "${name}-${version}-${platform}" documentNamespace "urn:uuid:${uuid}")
string(JSON sbom SET "${sbom}" creationInfo "${creation}")
string(JSON sbom SET "${sbom}" packages "${packages}")
string(JSON sbom SET "${sbom}" relationships "${relationships}")
file(WRITE $ENV{DESTDIR}${destination}/ZOL_Framework.spdx.json "${sbom}\n")
