add_library(fmt::fmt-header-only INTERFACE IMPORTED)
target_include_directories(fmt::fmt-header-only INTERFACE ${zolDeps}/include)
target_compile_definitions(fmt::fmt-header-only INTERFACE FMT_HEADER_ONLY)
set(fmt_FOUND TRUE)
