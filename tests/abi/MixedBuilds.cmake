# Modules from one compiler and build type run with a framework from another. ZOL_TEST_ALL adds the
# rest of the pairings to the two that are tested by default.

if(WIN32)
    set(gcc ${PROJECT_SOURCE_DIR}/cmake/mingw-w64.cmake)
    set(clang ${PROJECT_SOURCE_DIR}/cmake/mingw-w64-clang.cmake)
else()
    find_program(ZOL_OTHER_COMPILER clang++ REQUIRED)
    set(gcc ${CMAKE_CXX_COMPILER})
    set(clang ${ZOL_OTHER_COMPILER})
endif()

# Debug containers and iterators have another layout.
set(debug "-O0 -g -D_GLIBCXX_DEBUG -D_GLIBCXX_DEBUG_PEDANTIC -D_GLIBCXX_ASSERTIONS")
set(release "-O2 -DNDEBUG")

# test_mixed_build(<test> <modules|framework> <compiler> <standard> <flags>)
function(test_mixed_build test side compiler standard flags)
    add_test(NAME MixedBuilds.${test}
        COMMAND ${CMAKE_COMMAND}
            -DSIDE=${side}
            -DBIN=$<TARGET_FILE_DIR:ZOL_Framework>
            -DPACKAGE=${ZOL_TEST_PACKAGE}
            -DWORK=${CMAKE_CURRENT_BINARY_DIR}/mixed-builds/${test}
            -DGENERATOR=${CMAKE_GENERATOR}
            -DCOMPILER=${compiler}
            -DSTANDARD=${standard}
            -DFLAGS=${flags}
            -DEMULATOR=${CMAKE_CROSSCOMPILING_EMULATOR}
            -P ${CMAKE_CURRENT_SOURCE_DIR}/mixed-builds/RunMixedBuild.cmake)
    set_tests_properties(MixedBuilds.${test} PROPERTIES TIMEOUT 600)
    if(side STREQUAL "modules")
        set_tests_properties(MixedBuilds.${test} PROPERTIES FIXTURES_REQUIRED zol_package)
    endif()
endfunction()

test_mixed_build(ModulesOfClangDebugCxx17 modules ${clang} 17 "${debug}")
test_mixed_build(FrameworkOfClangReleaseCxx23 framework ${clang} 23 "${release}")
if(ZOL_TEST_ALL)
    test_mixed_build(ModulesOfClangReleaseCxx20 modules ${clang} 20 "${release}")
    test_mixed_build(ModulesOfClangReleaseCxx23 modules ${clang} 23 "${release}")
    test_mixed_build(ModulesOfGccDebugCxx17 modules ${gcc} 17 "${debug}")
    test_mixed_build(ModulesOfGccReleaseCxx20 modules ${gcc} 20 "${release}")
    test_mixed_build(ModulesOfGccReleaseCxx23 modules ${gcc} 23 "${release}")
    test_mixed_build(FrameworkOfClangDebugCxx17 framework ${clang} 17 "${debug}")
    test_mixed_build(FrameworkOfGccDebugCxx20 framework ${gcc} 20 "${debug}")
endif()
