# zlib, a static library of Debian's sources. They are in C, unlike the rest.
set(sources ${zolDeps}/zlib)
if(NOT EXISTS ${sources}/deflate.c)
    message(FATAL_ERROR "${sources} lacks the sources of zlib: run scripts/setup.sh all")
endif()
enable_language(C)
set(files adler32 compress crc32 deflate gzclose gzlib gzread gzwrite infback inffast inflate inftrees trees
    uncompr zutil)
list(TRANSFORM files REPLACE "(.+)" "${sources}/\\1.c")
add_library(zlib STATIC ${files})
target_include_directories(zlib SYSTEM PUBLIC ${sources})
target_compile_options(zlib PRIVATE /w)
add_library(ZLIB::ZLIB ALIAS zlib)
set(ZLIB_FOUND TRUE)
