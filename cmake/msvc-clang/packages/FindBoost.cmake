# Boost.Thread, a static library of the sources that Boost builds it of for Visual C++.
set(sources ${zolDeps}/boost-thread/win32)
if(NOT EXISTS ${sources}/tss_pe.cpp)
    message(FATAL_ERROR "${sources} lacks the sources of Boost.Thread: run scripts/setup.sh all")
endif()
add_library(boost_thread STATIC ${sources}/thread.cpp ${sources}/thread_primitives.cpp ${sources}/tss_pe.cpp)
target_include_directories(boost_thread SYSTEM PUBLIC ${zolDeps}/include)
target_compile_features(boost_thread PUBLIC cxx_std_17)
target_compile_definitions(boost_thread
    PRIVATE BOOST_THREAD_BUILD_LIB
    PUBLIC BOOST_ALL_NO_LIB BOOST_CHRONO_HEADER_ONLY
    INTERFACE BOOST_THREAD_USE_LIB)
# clang 16 and newer reject casts to enumerations in Boost 1.74. Its headers name their paths in exceptions.
target_compile_options(boost_thread
    PRIVATE /w /clang:-fmacro-prefix-map=${zolDeps}/=
    PUBLIC -Wno-enum-constexpr-conversion)
add_library(Boost::thread ALIAS boost_thread)
set(Boost_FOUND TRUE)
