# The SDK: bin/ lib/ include/ lib/cmake/ZOL_Framework/, in four components: Runtime, Backends,
# Development and Debug. The rules of backends/ are in Backends by default, see CMakeLists.txt.

include(CMakePackageConfigHelpers)
include(${CMAKE_CURRENT_LIST_DIR}/ShippedTargets.cmake)

set(ZOL_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/ZOL_Framework)
if(WIN32)
    set(ZOL_INSTALL_MODULEDIR ${CMAKE_INSTALL_BINDIR})
else()
    set(ZOL_INSTALL_MODULEDIR ${CMAKE_INSTALL_LIBDIR})
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
    PATH_VARS ZOL_INSTALL_MODULEDIR)
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/ZOL_FrameworkConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/ZOL_FrameworkConfig.cmake
    ${PROJECT_BINARY_DIR}/ZOL_FrameworkConfigVersion.cmake
    ${PROJECT_SOURCE_DIR}/cmake/ZOLBackend.cmake
    ${PROJECT_SOURCE_DIR}/cmake/backend-exports.def
    ${PROJECT_SOURCE_DIR}/cmake/backend-exports.map
    DESTINATION ${ZOL_INSTALL_CMAKEDIR} COMPONENT Development)

# For plug-in authors: a project to copy, whose tests need the tool.
if(ZOL_BUILD_TOOLS)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/cmake/templates
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zol-framework COMPONENT Development)
    if(MINGW)
        install(FILES ${PROJECT_SOURCE_DIR}/cmake/mingw-w64.cmake
            DESTINATION ${CMAKE_INSTALL_DATADIR}/zol-framework COMPONENT Development)
    endif()
endif()

include(${CMAKE_CURRENT_LIST_DIR}/PkgConfig.cmake)

# What a mingw-built program needs beside it. A module with a runtime of its own does not see the
# exceptions that are on their way in another's, so these are never linked statically.
set(ZOL_RUNTIME_LIBRARIES "")
if(MINGW)
    separate_arguments(zolLinkFlags UNIX_COMMAND "${CMAKE_SHARED_LINKER_FLAGS}")
    foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
        execute_process(
            COMMAND ${CMAKE_CXX_COMPILER} ${zolLinkFlags} -print-file-name=${dll}
            OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        if(NOT IS_ABSOLUTE "${path}")
            message(FATAL_ERROR "${CMAKE_CXX_COMPILER} does not know where its ${dll} is")
        endif()
        file(REAL_PATH ${path} path)
        list(APPEND ZOL_RUNTIME_LIBRARIES ${path})
    endforeach()
    file(COPY ${ZOL_RUNTIME_LIBRARIES} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    install(FILES ${ZOL_RUNTIME_LIBRARIES} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime)
endif()

include(${CMAKE_CURRENT_LIST_DIR}/DebugFiles.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/Sbom.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/Debuggers.cmake)
