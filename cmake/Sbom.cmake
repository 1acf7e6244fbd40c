# The bill of materials, an SPDX document that is written whenever the package is installed, with
# the versions that the compiler and its libraries then have.

set(zolSbomTargets ${zolCompiled})
list(TRANSFORM zolSbomTargets REPLACE "(.+)" "$<TARGET_PROPERTY:\\1,INCLUDE_DIRECTORIES>")
install(CODE "
    set(compiler [==[${CMAKE_CXX_COMPILER}]==])
    set(linkFlags [==[${CMAKE_SHARED_LINKER_FLAGS}]==])
    set(compilerIsMsvc \"$<BOOL:${MSVC}>\")
    set(mingw \"$<BOOL:${MINGW}>\")
    set(backends \"${zolBackends}\")
    set(tools \"${ZOL_BUILD_TOOLS}\")
    set(includeFolders [==[${zolSbomTargets}]==])
    set(name \"${PROJECT_NAME}\")
    set(version \"${PROJECT_VERSION}\")
    set(platform \"${CMAKE_SYSTEM_NAME}\")
    set(scratch \"${PROJECT_BINARY_DIR}/sbom\")
    set(destination \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/zol-framework\")
    include(\"${PROJECT_SOURCE_DIR}/cmake/WriteSbom.cmake\")"
    COMPONENT Runtime)
