# What cannot meet the framework is refused by its headers, with the reason.

# test_refusal(<test> <reason> <flag>...): compiling the client with these flags ends in an error that
# tells the reason.
function(test_refusal test reason)
    add_test(NAME Refusals.${test}
        COMMAND ${CMAKE_CXX_COMPILER} -std=c++17 -fsyntax-only -I ${PROJECT_SOURCE_DIR}/include
            ${ARGN} ${CMAKE_CURRENT_SOURCE_DIR}/Client.cpp)
    set_tests_properties(Refusals.${test} PROPERTIES PASS_REGULAR_EXPRESSION "error: [^\n]*${reason}")
endfunction()

add_test(NAME Refusals.NothingIsRefusedWithoutAReason
    COMMAND ${CMAKE_CXX_COMPILER} -std=c++17 -fsyntax-only -I ${PROJECT_SOURCE_DIR}/include
        ${CMAKE_CURRENT_SOURCE_DIR}/Client.cpp)
test_refusal(StringsOfTheOldAbi "properties need _GLIBCXX_USE_CXX11_ABI=1"
    -D_GLIBCXX_USE_CXX11_ABI=0)
test_refusal(NoRunTimeTypeInformation "LoggerException needs run-time type information" -fno-rtti)
# No such library is needed to read what its macros lead to.
test_refusal(CheckedIteratorsOfVisualCxx "properties need _ITERATOR_DEBUG_LEVEL=0"
    -D_MSVC_STL_VERSION=143 -D_ITERATOR_DEBUG_LEVEL=2)

if(NOT WIN32)
    test_refusal(WideCharactersOfAnotherSize "need the platform's own wchar_t" -fshort-wchar)

    # For Visual C++'s binary interface, from clang.
    find_program(ZOL_LIBCXX_COMPILER clang++-19 REQUIRED)
    add_test(NAME Refusals.AnotherCallingConventionOfVisualCxx
        COMMAND ${ZOL_LIBCXX_COMPILER} --config=${CMAKE_CURRENT_SOURCE_DIR}/msvc/target.cfg
            -std=c++17 -fsyntax-only -Xclang -fdefault-calling-conv=vectorcall
            -I ${PROJECT_SOURCE_DIR}/include ${CMAKE_CURRENT_SOURCE_DIR}/Client.cpp)
    set_tests_properties(Refusals.AnotherCallingConventionOfVisualCxx PROPERTIES
        PASS_REGULAR_EXPRESSION "error: [^\n]*the framework's functions are __cdecl")

    # The headers of another standard library alone: nothing of it is linked.
    set(libcxx ${ZOL_LIBCXX_COMPILER} -stdlib=libc++ -std=c++17 -fsyntax-only
        -I ${PROJECT_SOURCE_DIR}/include)
    add_test(NAME Refusals.AnotherStandardLibrary
        COMMAND ${libcxx} ${CMAKE_CURRENT_SOURCE_DIR}/Client.cpp)
    set_tests_properties(Refusals.AnotherStandardLibrary PROPERTIES PASS_REGULAR_EXPRESSION
        "error: [^\n]*needs the standard library that its module has")
    add_test(NAME Refusals.AnotherStandardLibraryForTheModuleAndAllItsUsersIsNot
        COMMAND ${libcxx} -DZOL_FRAMEWORK_OTHER_STANDARD_LIBRARY
            ${CMAKE_CURRENT_SOURCE_DIR}/Client.cpp)
endif()
