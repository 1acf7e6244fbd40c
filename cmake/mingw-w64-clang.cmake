# The cross build of mingw-w64.cmake with clang++ in place of g++: the same headers and runtime
# libraries, so that what either builds runs in one process. Clang does not know Debian's names for
# the folders of a threading model, so they are passed to it.
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)

execute_process(
    COMMAND ${CMAKE_CXX_COMPILER} -print-libgcc-file-name
    OUTPUT_VARIABLE gcc OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
get_filename_component(gcc ${gcc} DIRECTORY)
set(root /usr/x86_64-w64-mingw32)

set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET x86_64-w64-windows-gnu)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-windows-gnu)
# The headers of newer versions of clang warn of each other.
set(CMAKE_CXX_FLAGS_INIT "-nostdlibinc -pthread -Wno-#warnings")
foreach(folder ${gcc}/include/c++ ${gcc}/include/c++/x86_64-w64-mingw32
        ${gcc}/include/c++/backward ${root}/include)
    string(APPEND CMAKE_CXX_FLAGS_INIT " -isystem ${folder}")
endforeach()
foreach(kind EXE SHARED MODULE)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT
        "-B${gcc} -B${root}/lib -L${gcc} -L${root}/lib --ld-path=/usr/bin/x86_64-w64-mingw32-ld")
endforeach()
