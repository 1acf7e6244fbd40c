# The bill of materials: share/zol-framework/ZOL_Framework.spdx.json, an SPDX document. All versions are
# read while CMake configures, and without running Visual C++, which works only with the variables of a
# developer prompt. What depends on the installation is added by WriteSbom.cmake.

# zol_include_folders(<result> <target>...): those of the targets and of the libraries that they link.
function(zol_include_folders result)
    set(folders "")
    set(seen "")
    set(targets ${ARGN})
    while(targets)
        list(POP_FRONT targets target)
        if(NOT TARGET "${target}" OR target IN_LIST seen)
            continue()
        endif()
        list(APPEND seen ${target})
        foreach(property IN ITEMS INTERFACE_INCLUDE_DIRECTORIES INTERFACE_LINK_LIBRARIES)
            get_target_property(values ${target} ${property})
            foreach(value IN LISTS values)
                if(value MATCHES "^\\$<TARGET_PROPERTY:([^,]+),INTERFACE_INCLUDE_DIRECTORIES>$")
                    list(APPEND targets ${CMAKE_MATCH_1})
                elseif(value MATCHES "^\\$<(BUILD_INTERFACE|LINK_ONLY):([^<>]+)>$")
                    set(value ${CMAKE_MATCH_2})
                endif()
                if(TARGET "${value}")
                    list(APPEND targets ${value})
                elseif(IS_ABSOLUTE "${value}")
                    list(APPEND folders ${value})
                endif()
            endforeach()
        endforeach()
    endwhile()
    set(${result} ${folders} PARENT_SCOPE)
endfunction()

# zol_library_header(<result> <target> <header>): the path of a header of the library, or empty. CMake
# configures again when the header changes.
function(zol_library_header result target header)
    zol_include_folders(folders ${target})
    unset(path)
    find_file(path ${header} NO_CACHE PATHS ${folders} ${CMAKE_CXX_IMPLICIT_INCLUDE_DIRECTORIES}
        NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
    if(path)
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${path})
        set(${result} ${path} PARENT_SCOPE)
    else()
        set(${result} "" PARENT_SCOPE)
    endif()
endfunction()

# zol_header_numbers(<result> <target> <header>... MACROS <macro>...): the values of the macros in the
# first of the library's headers that defines them. Releases differ in the header.
function(zol_header_numbers result target)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "" MACROS)
    foreach(header IN LISTS arg_UNPARSED_ARGUMENTS)
        zol_library_header(path ${target} ${header})
        if(NOT path)
            continue()
        endif()
        set(values "")
        foreach(macro IN LISTS arg_MACROS)
            file(STRINGS ${path} lines LIMIT_COUNT 1 REGEX "^[ \t]*#[ \t]*define[ \t]+${macro}[ \t]+[0-9]+")
            if(lines MATCHES "${macro}[ \t]+([0-9]+)")
                list(APPEND values ${CMAKE_MATCH_1})
            endif()
        endforeach()
        list(LENGTH values found)
        list(LENGTH arg_MACROS wanted)
        if(found EQUAL wanted)
            set(${result} ${values} PARENT_SCOPE)
            return()
        endif()
    endforeach()
    message(FATAL_ERROR "no header of ${target} defines ${arg_MACROS}: ${arg_UNPARSED_ARGUMENTS}")
endfunction()

# zol_package_version(<result> <file>): the version of the Debian package of a file, or empty.
function(zol_package_version result file)
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

# zol_owner_version(<result> <file of g++'s or clang++'s libraries>): the version of its Debian package,
# or of the compiler if it belongs to no package.
function(zol_owner_version result file)
    separate_arguments(flags UNIX_COMMAND "${CMAKE_SHARED_LINKER_FLAGS}")
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} ${flags} -print-file-name=${file}
        OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    zol_package_version(version ${path})
    if(version)
        # An upgrade replaces the file.
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${path})
    else()
        set(version "of compiler ${CMAKE_CXX_COMPILER_VERSION}")
    endif()
    set(${result} ${version} PARENT_SCOPE)
endfunction()

# zol_set_texts(<variable with a JSON object> <key> <text>...): a text may contain semicolons.
function(zol_set_texts variable)
    set(object "${${variable}}")
    math(EXPR last "${ARGC} - 1")
    foreach(index RANGE 1 ${last} 2)
        math(EXPR next "${index} + 1")
        string(JSON object SET "${object}" ${ARGV${index}} "\"${ARGV${next}}\"")
    endforeach()
    set(${variable} "${object}" PARENT_SCOPE)
endfunction()

# zol_append(<variable with a JSON array> <value>)
function(zol_append variable value)
    string(JSON length LENGTH "${${variable}}")
    string(JSON array SET "${${variable}}" ${length} "${value}")
    set(${variable} "${array}" PARENT_SCOPE)
endfunction()

set(zolSbomPackages "[]")
set(zolSbomRelationships "[]")

# zol_add_package(<name> <version> <licence> <supplier> <relationship of the framework to it> <comment>)
function(zol_add_package package packageVersion licence supplier relationship comment)
    string(REGEX REPLACE "[^A-Za-z0-9.-]" "-" id "SPDXRef-${package}")
    set(object "{ \"filesAnalyzed\": false }")
    zol_set_texts(object SPDXID "${id}" name "${package}" versionInfo "${packageVersion}"
        supplier "${supplier}" downloadLocation NOASSERTION licenseConcluded "${licence}"
        licenseDeclared "${licence}" copyrightText NOASSERTION comment "${comment}")
    zol_append(zolSbomPackages "${object}")

    set(from SPDXRef-ZOL-Framework)
    if(relationship STREQUAL "DESCRIBES")
        set(from SPDXRef-DOCUMENT)
    endif()
    set(object "{}")
    zol_set_texts(object
        spdxElementId ${from} relationshipType ${relationship} relatedSpdxElement "${id}")
    zol_append(zolSbomRelationships "${object}")
    set(zolSbomPackages "${zolSbomPackages}" PARENT_SCOPE)
    set(zolSbomRelationships "${zolSbomRelationships}" PARENT_SCOPE)
endfunction()

set(others NOASSERTION)
zol_add_package(${PROJECT_NAME} ${PROJECT_VERSION} NOASSERTION "Organization: ZOL Framework developers" DESCRIBES
    "The shared module, its back ends and what is needed to build with them")

zol_header_numbers(numbers zol_boost_thread boost/version.hpp MACROS BOOST_VERSION)
math(EXPR major "${numbers} / 100000")
math(EXPR minor "${numbers} / 100 % 1000")
math(EXPR patch "${numbers} % 100")
zol_add_package(Boost ${major}.${minor}.${patch} BSL-1.0 ${others} CONTAINS
    "Thread, Core and Atomic, compiled into the module")

if(ZOL_BUILD_BACKENDS)
    zol_header_numbers(numbers zol_spdlog spdlog/version.h
        MACROS SPDLOG_VER_MAJOR SPDLOG_VER_MINOR SPDLOG_VER_PATCH)
    list(JOIN numbers "." numbers)
    zol_add_package(spdlog ${numbers} MIT ${others} CONTAINS "Compiled into the back ends")

    zol_header_numbers(numbers zol_spdlog fmt/base.h fmt/core.h MACROS FMT_VERSION)
    math(EXPR major "${numbers} / 10000")
    math(EXPR minor "${numbers} / 100 % 100")
    math(EXPR patch "${numbers} % 100")
    zol_add_package(fmt ${major}.${minor}.${patch} MIT ${others} CONTAINS "Compiled into the back ends")

    # Its headers do not name their version.
    set(libraryVersion "")
    zol_library_header(header zol_utf8 utf8.h)
    if(header)
        zol_package_version(libraryVersion ${header})
    endif()
    if(NOT libraryVersion AND utf8cpp_VERSION)
        set(libraryVersion ${utf8cpp_VERSION})
    elseif(NOT libraryVersion)
        set(libraryVersion NOASSERTION)
    endif()
    zol_add_package(UTF8-CPP ${libraryVersion} BSL-1.0 ${others} CONTAINS "Compiled into the back ends")

    # On Linux it is a shared library, below.
    if(WIN32)
        zol_header_numbers(numbers zol_zlib zlib.h
            MACROS ZLIB_VER_MAJOR ZLIB_VER_MINOR ZLIB_VER_REVISION)
        list(JOIN numbers "." numbers)
        zol_add_package(zlib ${numbers} Zlib ${others} STATIC_LINK "Linked into the back ends that write files")
    endif()
endif()

if(ZOL_BUILD_TOOLS)
    zol_header_numbers(numbers zol_command_line CLI/Version.hpp
        MACROS CLI11_VERSION_MAJOR CLI11_VERSION_MINOR CLI11_VERSION_PATCH)
    list(JOIN numbers "." numbers)
    zol_add_package(CLI11 ${numbers} BSD-3-Clause ${others} CONTAINS "Compiled into zol-backend-check")
    zol_header_numbers(numbers zol_json nlohmann/detail/abi_macros.hpp nlohmann/json.hpp
        MACROS NLOHMANN_JSON_VERSION_MAJOR NLOHMANN_JSON_VERSION_MINOR NLOHMANN_JSON_VERSION_PATCH)
    list(JOIN numbers "." numbers)
    zol_add_package(nlohmann-json ${numbers} MIT ${others} CONTAINS "Compiled into zol-backend-check")
endif()

set(gccLicence "GPL-3.0-or-later WITH GCC-exception-3.1")
if(MINGW)
    zol_owner_version(libraryVersion libstdc++-6.dll)
    zol_add_package("libstdc++" ${libraryVersion} ${gccLicence} ${others} DYNAMIC_LINK
        "Shipped beside the module")
    zol_owner_version(libraryVersion libgcc_s_seh-1.dll)
    zol_add_package(libgcc ${libraryVersion} ${gccLicence} ${others} DYNAMIC_LINK
        "Shipped beside the module")
    zol_owner_version(libraryVersion libwinpthread-1.dll)
    zol_add_package(winpthreads ${libraryVersion} "MIT AND BSD-3-Clause" ${others} DYNAMIC_LINK
        "Shipped beside the module")
    zol_owner_version(libraryVersion libmingw32.a)
    zol_add_package(mingw-w64-runtime ${libraryVersion} ZPL-2.1 ${others} STATIC_LINK
        "Start-up code of each module; some of its files are under other licences")
elseif(MSVC)
    # What clang-cl imitates, or cl's own version.
    set(libraryVersion ${CMAKE_CXX_SIMULATE_VERSION})
    if(NOT libraryVersion)
        set(libraryVersion ${CMAKE_CXX_COMPILER_VERSION})
    endif()
    zol_add_package(visual-cxx-runtime "of compiler ${libraryVersion}" NOASSERTION ${others} DYNAMIC_LINK
        "Not shipped")
    # msvc-clang.cmake has no other standard library.
    if(CMAKE_CROSSCOMPILING)
        zol_add_package("libc++" ${CMAKE_CXX_COMPILER_VERSION} "Apache-2.0 WITH LLVM-exception" ${others}
            STATIC_LINK "Linked into each module")
    endif()
else()
    zol_owner_version(libraryVersion libstdc++.so.6)
    zol_add_package("libstdc++" ${libraryVersion} ${gccLicence} ${others} DYNAMIC_LINK "Not shipped")
    zol_owner_version(libraryVersion libgcc_s.so.1)
    zol_add_package(libgcc ${libraryVersion} ${gccLicence} ${others} DYNAMIC_LINK "Not shipped")
    zol_owner_version(libraryVersion libc.so.6)
    zol_add_package(glibc ${libraryVersion} LGPL-2.1-or-later ${others} DYNAMIC_LINK "Not shipped")
    if(ZOL_BUILD_BACKENDS)
        zol_owner_version(libraryVersion libz.so.1)
        zol_add_package(zlib ${libraryVersion} Zlib ${others} DYNAMIC_LINK
            "Not shipped; the back ends that write files need it")
    endif()
    if(ZOL_BUILD_TOOLS)
        zol_owner_version(libraryVersion libelf.so.1)
        zol_add_package(libelf ${libraryVersion} "LGPL-3.0-or-later OR GPL-2.0-or-later" ${others}
            DYNAMIC_LINK "Not shipped; zol-backend-check needs it")
    endif()
endif()

set(zolSbom "{ \"creationInfo\": { \"creators\": [\"Organization: ZOL Framework developers\"] } }")
zol_set_texts(zolSbom spdxVersion SPDX-2.3 dataLicense CC0-1.0 SPDXID SPDXRef-DOCUMENT
    name "${PROJECT_NAME}-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}")
string(JSON zolSbom SET "${zolSbom}" packages "${zolSbomPackages}")
string(JSON zolSbom SET "${zolSbom}" relationships "${zolSbomRelationships}")
file(WRITE ${PROJECT_BINARY_DIR}/ZOL_Framework.spdx.json "${zolSbom}\n")
install(CODE "
    set(document \"${PROJECT_BINARY_DIR}/ZOL_Framework.spdx.json\")
    set(destination \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/zol-framework\")
    include(\"${PROJECT_SOURCE_DIR}/cmake/WriteSbom.cmake\")"
    COMPONENT Runtime)
