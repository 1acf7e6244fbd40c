# Files for pkg-config. Their paths are relative to their own folder.

set(zolPkgConfigDir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# zol_pkg_config(<name> <description> <linker flag>...)
function(zol_pkg_config name description)
    file(RELATIVE_PATH ZOL_PC_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
    set(ZOL_PC_NAME ${name})
    set(ZOL_PC_DESCRIPTION ${description})
    list(JOIN ARGN " " ZOL_PC_LIBS)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/pkgconfig.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc
        DESTINATION ${zolPkgConfigDir} COMPONENT Development)
endfunction()

if(WIN32)
    zol_pkg_config(ZOL_Framework ${PROJECT_DESCRIPTION} -l${ZOL_MODULE_NAME})
    zol_pkg_config(ZOL_RegistryAccess "Access to the Windows registry"
        -lZOL_RegistryAccess -ladvapi32 -lshlwapi)
else()
    zol_pkg_config(ZOL_Framework ${PROJECT_DESCRIPTION}
        -l:${ZOL_MODULE_NAME}${CMAKE_SHARED_LIBRARY_SUFFIX})
endif()
