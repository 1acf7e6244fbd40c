# Debug information and what debuggers use to show the public classes. Releases are compiled with
# debug information; installed files are stripped of it and name the file <file>.debug beside them
# that has it.

# The contents of the public classes are in private classes.
if(WIN32)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/debugger/ZOL_Framework.natvis.in
        ${PROJECT_BINARY_DIR}/ZOL_Framework.natvis @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/ZOL_Framework.natvis
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zol-framework COMPONENT Development)
    # The debugger reads it from the module's debug information.
    if(MSVC)
        target_link_options(ZOL_Framework PRIVATE /NATVIS:${PROJECT_BINARY_DIR}/ZOL_Framework.natvis)
    endif()
else()
    # gdb loads a file of this name beside each module.
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/debugger/gdb-printers.py
        DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Debug
        RENAME ${ZOL_MODULE_NAME}${CMAKE_SHARED_LIBRARY_SUFFIX}-gdb.py)
endif()

if(MSVC)
    foreach(target IN LISTS zolCompiled)
        # The debug information of a static library would be in a file that is not shipped.
        if(NOT target STREQUAL "zol_registry_access_objects")
            target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:/Zi>)
        endif()
    endforeach()
    set(linked ZOL_Framework ${zolBackends})
    if(ZOL_BUILD_TOOLS)
        list(APPEND linked zol_backend_check)
    endif()
    foreach(target IN LISTS linked)
        # With /DEBUG, the linker keeps what nothing refers to, as src/CMakeLists.txt asks it to in the module.
        set(unreferenced /OPT:REF)
        if(target STREQUAL "ZOL_Framework")
            set(unreferenced /OPT:NOREF)
        endif()
        # Each file names its .pdb file without the path of the build machine.
        target_link_options(${target} PRIVATE
            $<$<CONFIG:Release>:/DEBUG ${unreferenced} /OPT:ICF> /PDBALTPATH:%_PDB%)
        install(FILES $<TARGET_PDB_FILE:${target}>
            DESTINATION ${ZOL_INSTALL_MODULEDIR} COMPONENT Debug OPTIONAL)
    endforeach()
    return()
endif()

# The paths of the build machine are not shipped.
foreach(target IN LISTS zolCompiled)
    target_compile_options(${target} PRIVATE
        $<$<CONFIG:Release>:-g>
        -fdebug-prefix-map=${PROJECT_SOURCE_DIR}=${PROJECT_NAME}-${PROJECT_VERSION})
endforeach()

# zol_install_split(<component> <folder> <call>): calls a function of SplitDebugInformation.cmake when
# the component is installed.
function(zol_install_split component folder call)
    install(CODE "
        set(objcopy \"${CMAKE_OBJCOPY}\")
        set(destination \"\${CMAKE_INSTALL_PREFIX}/${folder}\")
        set(debugFiles \"${PROJECT_BINARY_DIR}/debug-files\")
        include(\"${PROJECT_SOURCE_DIR}/cmake/SplitDebugInformation.cmake\")
        ${call}"
        COMPONENT ${component})
endfunction()

if(NOT ZOL_SANITIZE)
    zol_install_split(Runtime ${ZOL_INSTALL_MODULEDIR}
        "strip_installed(\"$<TARGET_FILE:ZOL_Framework>\")")
    foreach(file IN LISTS ZOL_RUNTIME_LIBRARIES)
        zol_install_split(Runtime ${ZOL_INSTALL_MODULEDIR}
            "strip_only(\"${file}\" --strip-unneeded)")
    endforeach()
    foreach(target IN LISTS zolBackends)
        zol_install_split(Backends ${ZOL_INSTALL_BACKENDDIR}
            "strip_installed(\"$<TARGET_FILE:${target}>\")")
    endforeach()
    if(ZOL_BUILD_TOOLS)
        zol_install_split(Development ${CMAKE_INSTALL_BINDIR}
            "strip_installed(\"$<TARGET_FILE:zol_backend_check>\")")
        zol_install_split(Debug ${CMAKE_INSTALL_BINDIR}
            "install_debug_file(\"$<TARGET_FILE:zol_backend_check>\")")
    endif()
    if(WIN32)
        zol_install_split(Development ${CMAKE_INSTALL_LIBDIR}
            "strip_only(\"$<TARGET_FILE:ZOL_RegistryAccess>\" --strip-debug)")
    endif()
    zol_install_split(Debug ${ZOL_INSTALL_MODULEDIR}
        "install_debug_file(\"$<TARGET_FILE:ZOL_Framework>\")")
    foreach(target IN LISTS zolBackends)
        zol_install_split(Debug ${ZOL_INSTALL_BACKENDDIR}
            "install_debug_file(\"$<TARGET_FILE:${target}>\")")
    endforeach()
endif()
