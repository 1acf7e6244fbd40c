# The SDK: bin/ lib/ include/ lib/cmake/ZOL_Framework/.

include(CMakePackageConfigHelpers)

set(ZOL_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/ZOL_Framework)

set(zolLibraries ZOL_Framework ZOL_Gadgets)
if(WIN32)
    list(APPEND zolLibraries ZOL_RegistryAccess)
endif()
install(TARGETS ${zolLibraries}
    EXPORT ZOL_FrameworkTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ZOL DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    PATTERN RegistryAccess EXCLUDE)
if(WIN32)
    install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/ZOL/RegistryAccess
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/ZOL)
endif()
install(EXPORT ZOL_FrameworkTargets NAMESPACE ZOL:: DESTINATION ${ZOL_INSTALL_CMAKEDIR})

configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/ZOL_FrameworkConfig.cmake.in
    ${PROJECT_BINARY_DIR}/ZOL_FrameworkConfig.cmake
    INSTALL_DESTINATION ${ZOL_INSTALL_CMAKEDIR})
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/ZOL_FrameworkConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/ZOL_FrameworkConfig.cmake
    ${PROJECT_BINARY_DIR}/ZOL_FrameworkConfigVersion.cmake
    ${PROJECT_SOURCE_DIR}/cmake/ZOLBackend.cmake
    ${PROJECT_SOURCE_DIR}/cmake/backend-exports.def
    ${PROJECT_SOURCE_DIR}/cmake/backend-exports.map
    DESTINATION ${ZOL_INSTALL_CMAKEDIR})

# What a mingw-built program needs beside it. A module with a runtime of its own does not see the
# exceptions that are on their way in another's, so these are never linked statically.
if(MINGW)
    set(zolRuntime "")
    separate_arguments(zolLinkFlags UNIX_COMMAND "${CMAKE_SHARED_LINKER_FLAGS}")
    foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
        execute_process(
            COMMAND ${CMAKE_CXX_COMPILER} ${zolLinkFlags} -print-file-name=${dll}
            OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        if(NOT IS_ABSOLUTE "${path}")
            message(FATAL_ERROR "${CMAKE_CXX_COMPILER} does not know where its ${dll} is")
        endif()
        file(REAL_PATH ${path} path)
        list(APPEND zolRuntime ${path})
    endforeach()
    file(COPY ${zolRuntime} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    install(FILES ${zolRuntime} DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
