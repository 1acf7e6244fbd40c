add_library(utf8::cpp INTERFACE IMPORTED)
target_include_directories(utf8::cpp INTERFACE ${zolDeps}/include/utf8cpp)
set(utf8cpp_FOUND TRUE)
