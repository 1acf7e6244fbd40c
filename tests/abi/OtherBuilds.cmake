# Modules built by one compiler, in one way, meet a framework built by another, in another way.

if(WIN32)
    set(gcc ${PROJECT_SOURCE_DIR}/cmake/mingw-w64.cmake)
    set(clang ${PROJECT_SOURCE_DIR}/cmake/mingw-w64-clang.cmake)
else()
    find_program(ZOL_OTHER_COMPILER clang++ REQUIRED)
    set(gcc ${CMAKE_CXX_COMPILER})
    set(clang ${ZOL_OTHER_COMPILER})
endif()

# Iterators and containers that check themselves, which have another layout; and no optimization.
set(debug "-O0 -g -D_GLIBCXX_DEBUG -D_GLIBCXX_DEBUG_PEDANTIC -D_GLIBCXX_ASSERTIONS")
set(release "-O2 -DNDEBUG")

# test_other_build(<test> <modules|framework> <compiler> <standard> <flags>)
function(test_other_build test side compiler standard flags)
    add_test(NAME OtherBuilds.${test}
        COMMAND ${CMAKE_COMMAND}
            -DSIDE=${side}
            -DBIN=${CMAKE_RUNTIME_OUTPUT_DIRECTORY}
            -DPACKAGE=${ZOL_TEST_PACKAGE}
            -DWORK=${CMAKE_CURRENT_BINARY_DIR}/others/${test}
            -DGENERATOR=${CMAKE_GENERATOR}
            -DCOMPILER=${compiler}
            -DSTANDARD=${standard}
            -DFLAGS=${flags}
            -DEMULATOR=${CMAKE_CROSSCOMPILING_EMULATOR}
            -P ${CMAKE_CURRENT_SOURCE_DIR}/others/RunOtherBuild.cmake)
    set_tests_properties(OtherBuilds.${test} PROPERTIES FIXTURES_REQUIRED zol_package TIMEOUT 600)
endfunction()

test_other_build(ModulesOfClangInDebugAsCxx17 modules ${clang} 17 "${debug}")
test_other_build(ModulesOfClangInReleaseAsCxx20 modules ${clang} 20 "${release}")
test_other_build(ModulesOfClangInReleaseAsCxx23 modules ${clang} 23 "${release}")
test_other_build(ModulesOfGccInDebugAsCxx17 modules ${gcc} 17 "${debug}")
test_other_build(ModulesOfGccInReleaseAsCxx20 modules ${gcc} 20 "${release}")
test_other_build(ModulesOfGccInReleaseAsCxx23 modules ${gcc} 23 "${release}")
test_other_build(FrameworkOfClangInDebugAsCxx17 framework ${clang} 17 "${debug}")
test_other_build(FrameworkOfClangInReleaseAsCxx23 framework ${clang} 23 "${release}")
test_other_build(FrameworkOfGccInDebugAsCxx20 framework ${gcc} 20 "${debug}")
