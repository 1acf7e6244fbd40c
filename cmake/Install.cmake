# The SDK: bin/ lib/ include/ lib/cmake/ZOL_Framework/, in four components: Runtime, Backends,
# Development and Debug.

include(CMakePackageConfigHelpers)

set(ZOL_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/ZOL_Framework)
if(WIN32)
    set(ZOL_INSTALL_MODULEDIR ${CMAKE_INSTALL_BINDIR})
    set(ZOL_INSTALL_BACKENDDIR ${CMAKE_INSTALL_BINDIR})
else()
    set(ZOL_INSTALL_MODULEDIR ${CMAKE_INSTALL_LIBDIR})
    # Not among the libraries of the system. The run paths lead from the module to the back ends, also
    # beside it, and back. They also fit the build tree. With run paths of its own, CMake would fill
    # these up with empty elements, and the loader would search the current folder.
    set(ZOL_INSTALL_BACKENDDIR ${CMAKE_INSTALL_LIBDIR}/${ZOL_BACKEND_FOLDER})
    set_target_properties(ZOL_Framework ${zolBackends} PROPERTIES BUILD_WITH_INSTALL_RPATH ON)
    set_property(TARGET ZOL_Framework PROPERTY INSTALL_RPATH "$ORIGIN" "$ORIGIN/${ZOL_BACKEND_FOLDER}")
    foreach(target IN LISTS zolBackends)
        set_property(TARGET ${target} PROPERTY INSTALL_RPATH "$ORIGIN" "$ORIGIN/..")
    endforeach()
endif()

set(zolLibraries ZOL_Framework ZOL_Gadgets)
if(WIN32)
    list(APPEND zolLibraries ZOL_RegistryAccess)
endif()
install(TARGETS ${zolLibraries}
    EXPORT ZOL_FrameworkTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
install(TARGETS ${zolBackends}
    LIBRARY DESTINATION ${ZOL_INSTALL_BACKENDDIR} COMPONENT Backends)
if(ZOL_BUILD_TOOLS)
    install(TARGETS zol_backend_check EXPORT ZOL_FrameworkTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Development)
endif()
install(FILES ${ZOL_RUNTIME_LIBRARIES} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ZOL DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    COMPONENT Development
    PATTERN RegistryAccess EXCLUDE)
if(WIN32)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ZOL/RegistryAccess
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ZOL COMPONENT Development)
endif()
install(EXPORT ZOL_FrameworkTargets NAMESPACE ZOL:: DESTINATION ${ZOL_INSTALL_CMAKEDIR}
    COMPONENT Development)

set(ZOL_PACKAGE_COMPONENTS ${zolLibraries})
list(TRANSFORM ZOL_PACKAGE_COMPONENTS REPLACE "^ZOL_" "")
list(TRANSFORM zolBackends REPLACE "(.+)" "\\1_r${CMAKE_SHARED_MODULE_SUFFIX}"
    OUTPUT_VARIABLE ZOL_BACKEND_FILES)
configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/ZOL_FrameworkConfig.cmake.in
    ${PROJECT_BINARY_DIR}/ZOL_FrameworkConfig.cmake
    INSTALL_DESTINATION ${ZOL_INSTALL_CMAKEDIR}
    PATH_VARS ZOL_INSTALL_BACKENDDIR)
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/VersionRule.cmake
    COMPATIBILITY SameMajorVersion)
file(READ ${PROJECT_BINARY_DIR}/VersionRule.cmake ZOL_VERSION_RULE)
configure_file(
    ${PROJECT_SOURCE_DIR}/cmake/ZOL_FrameworkConfigVersion.cmake.in
    ${PROJECT_BINARY_DIR}/ZOL_FrameworkConfigVersion.cmake @ONLY)
install(FILES
    ${PROJECT_BINARY_DIR}/ZOL_FrameworkConfig.cmake
    ${PROJECT_BINARY_DIR}/ZOL_FrameworkConfigVersion.cmake
    ${PROJECT_SOURCE_DIR}/cmake/ZOLBackend.cmake
    ${PROJECT_SOURCE_DIR}/cmake/CheckBackendExports.cmake
    ${PROJECT_SOURCE_DIR}/cmake/backend-exports.def
    ${PROJECT_SOURCE_DIR}/cmake/backend-exports.map
    DESTINATION ${ZOL_INSTALL_CMAKEDIR} COMPONENT Development)

# A project for plug-in authors to copy. Its tests need zol-backend-check.
if(ZOL_BUILD_TOOLS)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/packaging/templates
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zol-framework COMPONENT Development)
    if(MINGW)
        install(FILES ${PROJECT_SOURCE_DIR}/cmake/mingw-w64.cmake
            DESTINATION ${CMAKE_INSTALL_DATADIR}/zol-framework COMPONENT Development)
    endif()
endif()

include(${CMAKE_CURRENT_LIST_DIR}/PkgConfig.cmake)

include(${CMAKE_CURRENT_LIST_DIR}/DebugFiles.cmake)

include(${CMAKE_CURRENT_LIST_DIR}/Sbom.cmake)
