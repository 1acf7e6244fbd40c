# The headers reject settings that do not fit the framework, and the error says why.

# test_compile(<test> <exit code> <expected output> <compiler> <flag>...)
function(test_compile test exit expected compiler)
    add_test(NAME CompileErrors.${test}
        COMMAND ${CMAKE_COMMAND}
            -DPROGRAM=${compiler}
            "-DARGS=-std=c++17;-fsyntax-only;-I;${PROJECT_SOURCE_DIR}/include;${ARGN};${CMAKE_CURRENT_SOURCE_DIR}/Client.cpp"
            -DEXIT=${exit}
            "-DMATCHES=${expected}"
            -P ${PROJECT_SOURCE_DIR}/tests/support/ExpectOutput.cmake)
endfunction()

# test_compile_error(<test> <reason> <compiler> <flag>...)
function(test_compile_error test reason)
    test_compile(${test} 1 "error: [^\n]*${reason}" ${ARGN})
endfunction()

if(MSVC)
    # clang for the ABI of Visual C++, with clang's own options.
    set(compiler ${zolLlvm}/bin/clang++ --target=${CMAKE_CXX_COMPILER_TARGET} ${zolClangOptions})
    foreach(level IN ITEMS LOG_LEVEL_TRACE LOG_LEVEL_WARNING)
        test_compile(VisualCxxWith${level}Compiles 0 "" ${compiler}
            -Wall -Wextra -Wshadow -Wconversion -Werror -DZOL_LOG_COMPILED_LEVEL=${level})
    endforeach()
    test_compile_error(OtherCallingConventionOfVisualCxx "the framework's functions are __cdecl"
        ${compiler} -Xclang -fdefault-calling-conv=vectorcall)
    test_compile_error(OtherStandardLibrary "needs the standard library that its module has"
        ${compiler} -UZOL_FRAMEWORK_OTHER_STANDARD_LIBRARY)
    return()
endif()

test_compile(DefaultFlagsCompile 0 "" ${CMAKE_CXX_COMPILER})
test_compile_error(OldStringAbi "properties need _GLIBCXX_USE_CXX11_ABI=1"
    ${CMAKE_CXX_COMPILER} -D_GLIBCXX_USE_CXX11_ABI=0)
test_compile_error(NoRunTimeTypeInformation "LoggerException needs run-time type information"
    ${CMAKE_CXX_COMPILER} -fno-rtti)
# The reason is the first error, also of each header that includes no other one.
set(headers Check.h Export.h GenericLogger/LoggingLevel.h GenericLogger/Logger.h GenericLogger/LogStatements.h
    ../Gadgets/DLL/DLLHolder.h ../Testing/CapturedLog.h)
if(WIN32)
    list(APPEND headers ../RegistryAccess/Registry.h)
endif()
foreach(header IN LISTS headers)
    get_filename_component(name ${header} NAME_WE)
    test_compile_error(OldStandard.${name} "needs C[+][+]17 or later"
        ${CMAKE_CXX_COMPILER} -std=c++14 -Wfatal-errors -DZOL_TEST_ONE_HEADER -include ZOL/Framework/${header})
    test_compile_error(NoExceptions.${name} "needs exceptions"
        ${CMAKE_CXX_COMPILER} -fno-exceptions -Wfatal-errors -DZOL_TEST_ONE_HEADER -include ZOL/Framework/${header})
endforeach()
set(warnings -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Werror)
foreach(standard 17 20 23)
    test_compile(Standard${standard}Compiles 0 "" ${CMAKE_CXX_COMPILER} -std=c++${standard} ${warnings})
endforeach()
test_compile(CompiledLevelCompiles 0 ""
    ${CMAKE_CXX_COMPILER} ${warnings} -DZOL_LOG_COMPILED_LEVEL=LOG_LEVEL_WARNING)
test_compile_error(WrongCompiledLevel "LOG_LEVEL_WARN.* was not declared|undeclared identifier .LOG_LEVEL_WARN."
    ${CMAKE_CXX_COMPILER} -DZOL_LOG_COMPILED_LEVEL=LOG_LEVEL_WARN)
# The macros are enough: the check does not need Visual C++'s own library.
test_compile_error(CheckedIteratorsOfVisualCxx "properties need _ITERATOR_DEBUG_LEVEL=0"
    ${CMAKE_CXX_COMPILER} -D_MSVC_STL_VERSION=143 -D_ITERATOR_DEBUG_LEVEL=2)

if(NOT WIN32)
    test_compile_error(OtherSizeOfWideCharacters "need the platform's own wchar_t"
        ${CMAKE_CXX_COMPILER} -fshort-wchar)
endif()
