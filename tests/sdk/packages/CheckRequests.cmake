# Which requests for versions and components the CMake package accepts, and its errors for others.
#
# cmake -DPACKAGE=... -DWORK=... -DGENERATOR=... -DTOOLCHAIN=... -DOPTIONS=... -DVERSION=...
#       -DWINDOWS=0|1 -P CheckRequests.cmake

cmake_minimum_required(VERSION 3.25)

separate_arguments(options NATIVE_COMMAND "${OPTIONS}")
set(target -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} ${options})

# ask(<request> <targets>): sets <result> and <output>, which is one line.
macro(ask request targets)
    file(REMOVE_RECURSE ${WORK})
    execute_process(
        COMMAND ${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/finder -B ${WORK} -G ${GENERATOR}
            ${target} "-DCMAKE_PREFIX_PATH=${PACKAGE}"
            "-DREQUEST=${request}" "-DEXPECTED_TARGETS=${targets}"
        RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
    string(REGEX REPLACE "[ \n]+" " " output "${output}")
endmacro()

# expect_found(<request> <target>...)
function(expect_found request)
    ask("${request}" "${ARGN}")
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "'${request}' is rejected: ${output}")
    endif()
endfunction()

# expect_rejected(<request> <text>): the error must contain the text.
function(expect_rejected request text)
    ask("${request}" "")
    string(FIND "${output}" "${text}" position)
    if(result EQUAL 0 OR position EQUAL -1)
        message(FATAL_ERROR "'${request}' is not rejected with '${text}' (${result}): ${output}")
    endif()
endfunction()

set(accepted ZOL::Framework ZOL::Gadgets)
foreach(request IN ITEMS 2 2.0 2.0.8 ${VERSION} "${VERSION};EXACT")
    expect_found("${request}" ${accepted})
endforeach()
foreach(request IN ITEMS 1 1.9 2.0.8.130 2.1 3 3.0.0 "2.0.8;EXACT")
    expect_rejected("${request}" "version: ${VERSION}")
endforeach()

expect_found("2.0;COMPONENTS;Framework;Gadgets;Backends" ${accepted})
expect_found("2.0;OPTIONAL_COMPONENTS;Nonsense" ${accepted})
expect_rejected("2.0;COMPONENTS;Framework;Nonsense" "ZOL_Framework has no component Nonsense here")
if(WINDOWS)
    expect_found("2.0;COMPONENTS;RegistryAccess" ${accepted} ZOL::RegistryAccess)
else()
    expect_rejected("COMPONENTS;RegistryAccess" "ZOL_Framework has no component RegistryAccess here")
endif()

# The error of a project for the other platform gives the reason, also if it asks for no version.
if(WINDOWS)
    set(here Windows)
    set(there Linux)
    set(targetThere -DCMAKE_SYSTEM_NAME=Linux)
else()
    set(here Linux)
    set(there Windows)
    set(targetThere -DCMAKE_SYSTEM_NAME=Windows)
endif()
set(targetHere ${target})
set(target ${targetThere})
set(reason "version: ${VERSION}. This is the SDK for ${here} x64, but the project is built for ${there}.")
expect_rejected(2.0.8 "${reason}")
expect_rejected("" "${reason}")
set(target ${targetHere})

# copy_with_rule(<folder> <text> <replacement>): a copy of the package with another version file.
set(package lib/cmake/ZOL_Framework)
function(copy_with_rule folder text replacement)
    file(READ "${PACKAGE}/${package}/ZOL_FrameworkConfigVersion.cmake" rule)
    string(REPLACE "${text}" "${replacement}" rule "${rule}")
    file(REMOVE_RECURSE ${folder})
    file(COPY "${PACKAGE}/" DESTINATION ${folder})
    file(WRITE ${folder}/${package}/ZOL_FrameworkConfigVersion.cmake "${rule}")
endfunction()

# The search continues after the SDK of the other platform.
set(unpacked "${PACKAGE}")
copy_with_rule(${WORK}-there ${here} ${there})
set(PACKAGE "${WORK}-there")
expect_rejected("" "This is the SDK for ${there} x64, but the project is built for ${here}.")
set(PACKAGE "${WORK}-there;${unpacked}")
expect_found(2.0.8 ${accepted})
set(PACKAGE "${unpacked}")

# A later release of the same major version satisfies a request for this one.
copy_with_rule(${WORK}-later ${VERSION} 2.3.1.5)
set(PACKAGE ${WORK}-later)
foreach(request IN ITEMS 2.0 ${VERSION} 2.3)
    expect_found("${request}" ${accepted})
endforeach()
expect_rejected(2.4 "version: 2.3.1.5")
