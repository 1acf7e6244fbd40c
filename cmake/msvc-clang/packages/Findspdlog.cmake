add_library(spdlog::spdlog_header_only INTERFACE IMPORTED)
target_include_directories(spdlog::spdlog_header_only INTERFACE ${zolDeps}/include)
set(spdlog_FOUND TRUE)
