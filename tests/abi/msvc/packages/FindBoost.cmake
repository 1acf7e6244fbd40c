include(LinkedHeaders)
zol_linked_headers(linkedHeaders boost)
add_library(Boost::thread INTERFACE IMPORTED)
target_include_directories(Boost::thread INTERFACE ${linkedHeaders})
# clang 16 and newer reject casts to enumerations in Boost 1.74.
target_compile_options(Boost::thread INTERFACE -Wno-enum-constexpr-conversion)
set(Boost_FOUND TRUE)
