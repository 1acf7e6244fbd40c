# What the unpacked archives must contain and what they must not.
#
# cmake -DUNPACKED=... -DSOURCE=... -DBUILD=... -DMODULE=<file name> -DWINDOWS=0|1
#       -DOBJDUMP=... -P CheckContents.cmake

cmake_minimum_required(VERSION 3.25)

set(faults "")

set(backend "_r\\.(so|dll)$")
set(package lib/cmake/ZOL_Framework)
set(expected
    ${package}/ZOL_FrameworkConfig.cmake ${package}/ZOL_FrameworkConfigVersion.cmake
    ${package}/ZOL_FrameworkTargets.cmake ${package}/ZOL_FrameworkTargets-release.cmake
    ${package}/CheckBackendExports.cmake ${package}/ZOLBackend.cmake ${package}/backend-exports.def ${package}/backend-exports.map
    lib/pkgconfig/ZOL_Framework.pc share/zol-framework/ZOL_Framework.spdx.json)
if(WINDOWS)
    set(module bin/${MODULE}.dll)
    set(console bin/Console_r.dll)
    set(tool bin/zol-backend-check.exe)
    list(APPEND expected bin/libstdc++-6.dll bin/libgcc_s_seh-1.dll bin/libwinpthread-1.dll
        lib/lib${MODULE}.dll.a lib/libZOL_RegistryAccess.a lib/pkgconfig/ZOL_RegistryAccess.pc
        share/zol-framework/ZOL_Framework.natvis share/zol-framework/mingw-w64.cmake)
else()
    set(module lib/${MODULE}.so)
    set(console lib/zol/Console_r.so)
    set(tool bin/zol-backend-check)
    set(withDebugFiles lib/${MODULE}.so-gdb.py)
endif()
list(APPEND expected ${module} ${tool})
foreach(file IN ITEMS CMakeLists.txt HostTest.cpp MyBackend.cpp README.md)
    list(APPEND expected share/zol-framework/templates/backend/${file})
endforeach()
file(GLOB_RECURSE headers RELATIVE ${SOURCE}/include ${SOURCE}/include/*.h)
if(NOT WINDOWS)
    list(FILTER headers EXCLUDE REGEX RegistryAccess)
endif()
list(TRANSFORM headers PREPEND "include/")
list(APPEND expected ${headers})

# expect_files(<folder of UNPACKED> <file>...): exactly these files.
function(expect_files folder)
    file(GLOB_RECURSE files RELATIVE "${UNPACKED}/${folder}" "${UNPACKED}/${folder}/*")
    set(missing ${ARGN})
    set(surplus ${files})
    list(REMOVE_ITEM missing ${files})
    list(REMOVE_ITEM surplus ${ARGN})
    if(missing)
        list(APPEND faults "${folder} lacks ${missing}")
    endif()
    if(surplus)
        list(APPEND faults "${folder} has ${surplus} in addition")
    endif()
    set(faults "${faults}" PARENT_SCOPE)
endfunction()

# All back ends are accepted; Console must be one of them.
file(GLOB_RECURSE backends RELATIVE "${UNPACKED}/sdk" "${UNPACKED}/sdk/*")
list(FILTER backends INCLUDE REGEX "${backend}")
if(NOT console IN_LIST backends)
    list(APPEND faults "there is no ${console}")
endif()
set(debugFiles ${module} ${tool} ${backends})
list(TRANSFORM debugFiles APPEND ".debug")
expect_files(sdk ${expected} ${backends})
expect_files(with-debug-files ${expected} ${backends} ${debugFiles} ${withDebugFiles})

# No file contains a path of the build machine.
file(GLOB_RECURSE files "${UNPACKED}/with-debug-files/*")
foreach(file IN LISTS files)
    foreach(place IN ITEMS ${SOURCE}/ ${BUILD}/)
        file(STRINGS "${file}" traces LIMIT_COUNT 1 REGEX "${place}")
        if(traces)
            list(APPEND faults "${file} names ${place}")
        endif()
    endforeach()
endforeach()

# Only libraries of the system and of the SDK are needed.
if(WINDOWS)
    set(available advapi32.dll kernel32.dll msvcrt.dll ntdll.dll shell32.dll shlwapi.dll user32.dll ws2_32.dll
        libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll ${MODULE}.dll)
else()
    set(available libstdc++.so.6 libgcc_s.so.1 libc.so.6 libm.so.6 ld-linux-x86-64.so.2 ${MODULE}.so)
endif()
string(TOLOWER "${available}" available)
foreach(file IN ITEMS ${module} ${tool} ${backends})
    execute_process(COMMAND ${OBJDUMP} -p "${UNPACKED}/sdk/${file}"
        OUTPUT_VARIABLE headers COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "(NEEDED|DLL Name:) +[^ \r\n]+" needed "${headers}")
    if(NOT needed)
        list(APPEND faults "${file} needs no library according to objdump")
    endif()
    foreach(library IN LISTS needed)
        string(REGEX REPLACE ".* " "" library "${library}")
        string(TOLOWER "${library}" lower)
        # The tool alone needs libelf, which the Debian packages name and the documents list.
        if(file STREQUAL "${tool}" AND lower STREQUAL "libelf.so.1")
            continue()
        endif()
        if(NOT lower IN_LIST available)
            list(APPEND faults "${file} needs ${library}, which is not in the SDK")
        endif()
    endforeach()
endforeach()

if(faults)
    list(JOIN faults "\n" faults)
    message(NOTICE "${faults}")
    message(FATAL_ERROR "the archives have wrong contents")
endif()
