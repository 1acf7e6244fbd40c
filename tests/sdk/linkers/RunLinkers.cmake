# Builds the plug-ins: those with an entry point must build, those without must not, also not when the
# build is repeated.
#
# cmake -DPACKAGE=<the installed SDK> -DWORK=... -DGENERATOR=... -DTOOLCHAIN=... -DCOMPILER=...
#       -P RunLinkers.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)

file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${WORK} -G ${GENERATOR} ${compiler}
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH=${PACKAGE})
run(${CMAKE_COMMAND} --build ${WORK} --target good)

# expect_rejected(<plug-in> <text>)
function(expect_rejected plugin text)
    foreach(attempt IN ITEMS first second)
        execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK} --target ${plugin}
            RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
        string(REGEX REPLACE "[ \n]+" " " output "${output}") # the text of an error is wrapped
        if(result EQUAL 0 OR NOT output MATCHES "${text}")
            message(NOTICE "${output}")
            message(FATAL_ERROR "${plugin}, ${attempt} attempt: no error '${text}' (${result})")
        endif()
    endforeach()
endfunction()

# By the list of exports.
if(TOOLCHAIN)
    expect_rejected(defaultMissing "cannot export createBackend: symbol not defined")
    return()
endif()

# By the linker's option, or by the check after linking. Newer versions of lld report that the version
# script names a symbol that does not exist.
set(option "required symbol .createBackend. not defined")
set(check "_r.so does not export createBackend")
set(lldCheck "${check}|symbol 'createBackend' failed: symbol not defined")
expect_rejected(defaultMissing "${option}")
set(ways Flag Option Library)
if(CMAKE_VERSION VERSION_GREATER_EQUAL 3.29)
    list(APPEND ways Property)
endif()
foreach(way IN LISTS ways)
    expect_rejected(bfd${way}Missing "${option}")
    expect_rejected(gold${way}Missing "${check}")
    expect_rejected(lld${way}Missing "${lldCheck}")
endforeach()
foreach(place IN ITEMS goldText goldItem
        CMAKE_MODULE_LINKER_FLAGS_RELEASE CMAKE_CXX_FLAGS CMAKE_CXX_FLAGS_RELEASE)
    expect_rejected(${place}Missing "${check}")
endforeach()
expect_rejected(undefined "${check}")
# What a generator expression selects is not known in time.
expect_rejected(bfdExpressionMissing "${check}")
expect_rejected(goldExpressionMissing "${check}")
expect_rejected(lldExpressionMissing "${lldCheck}")

# With several configurations, neither is which of them will be linked.
run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR} -B ${WORK}/several -G "Ninja Multi-Config"
    ${compiler} -DCMAKE_PREFIX_PATH=${PACKAGE})
run(${CMAKE_COMMAND} --build ${WORK}/several --config Release --target CMAKE_MODULE_LINKER_FLAGS_RELEASEGood)
