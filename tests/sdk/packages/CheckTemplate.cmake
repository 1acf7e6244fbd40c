# Copies the plug-in template of the SDK, builds it with nothing but the SDK, and runs its tests.
#
# cmake -DPACKAGE=... -DWORK=... -DGENERATOR=... -DCONFIG=... -DTOOLCHAIN=... -DCOMPILER=... -DOPTIONS=...
#       -DEMULATOR=... -DWINEPREFIX=<the tree's prefix> -P CheckTemplate.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)

file(REMOVE_RECURSE ${WORK})
file(COPY "${PACKAGE}/share/zol-framework/templates/backend/" DESTINATION ${WORK}/mine)
set(toolchain "${PACKAGE}/share/zol-framework/mingw-w64.cmake")
if(EXISTS "${toolchain}")
    set(compiler "-DCMAKE_TOOLCHAIN_FILE=${toolchain}")
endif()
if(EMULATOR)
    # The SDK does not know this tree's Wine prefix.
    if(DEFINED ENV{ZOL_WINEPREFIX})
        set(WINEPREFIX $ENV{ZOL_WINEPREFIX})
    endif()
    set(ENV{WINEPREFIX} ${WINEPREFIX})
    set(ENV{WINEDEBUG} -all)
endif()
run(${CMAKE_COMMAND} -S ${WORK}/mine -B ${WORK}/build -G ${GENERATOR} ${compiler}
    -DCMAKE_BUILD_TYPE=${CONFIG} "-DCMAKE_PREFIX_PATH=${PACKAGE}")
run(${CMAKE_COMMAND} --build ${WORK}/build --config ${CONFIG})
run(${CMAKE_CTEST_COMMAND} --test-dir ${WORK}/build -C ${CONFIG} --output-on-failure --no-tests=error)
if(NOT output MATCHES "100% tests passed, 0 tests failed out of 2")
    message(FATAL_ERROR "not exactly two tests passed:\n${output}")
endif()
