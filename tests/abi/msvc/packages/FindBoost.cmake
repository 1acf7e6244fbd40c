include(LinkedHeaders)
zol_linked_headers(linkedHeaders boost)
add_library(Boost::thread INTERFACE IMPORTED)
target_include_directories(Boost::thread INTERFACE ${linkedHeaders})
# This clang refuses what Boost 1.74 does with enumerations.
target_compile_options(Boost::thread INTERFACE -Wno-enum-constexpr-conversion)
set(Boost_FOUND TRUE)
