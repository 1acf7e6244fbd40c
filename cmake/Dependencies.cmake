# Boost.Thread and header-only libraries, for each way to build:
#   zol_boost_thread   what the framework module links
#   zol_spdlog         the headers of spdlog and fmt; backends/common compiles both
#   zol_utf8           UTF8-CPP, which backends/common includes
#   zol_zlib           zlib, which backends/common links: shared on Linux, static on Windows
#   zol_command_line   CLI11 and
#   zol_json           JSON for Modern C++, what the tools compile in
#   zol_elf            libelf, which the tools link on Linux

add_library(zol_boost_thread INTERFACE)
add_library(zol_spdlog INTERFACE)
if(MSVC)
    if(DEFINED zolDeps AND NOT EXISTS ${zolDeps}/msvc-clang/lib/msvcrt.lib)
        message(FATAL_ERROR "${zolDeps} lacks the runtime libraries for Visual C++'s ABI: run scripts/setup.sh all")
    endif()
    # With optimization, its generator of code finds unreachable code in the templates of fmt and spdlog.
    # No setting for external headers silences that.
    target_compile_options(zol_spdlog INTERFACE /wd4702)
endif()
add_library(zol_utf8 INTERFACE)
add_library(zol_zlib INTERFACE)
add_library(zol_command_line INTERFACE)
add_library(zol_json INTERFACE)
add_library(zol_elf INTERFACE)

if(MINGW)
    # Debian has no Boost for mingw: scripts/setup.sh lays the library's sources, and links to the
    # header-only parts, into this folder.
    set(ZOL_WINDOWS_DEPS ${PROJECT_SOURCE_DIR}/build/deps CACHE PATH
        "Sources and headers for the cross build, made by scripts/setup.sh")
    if(NOT EXISTS ${ZOL_WINDOWS_DEPS}/boost-thread/win32/thread.cpp)
        message(FATAL_ERROR "${ZOL_WINDOWS_DEPS} lacks the sources of Boost.Thread: run scripts/setup.sh")
    endif()

    add_library(zol_boost_thread_windows STATIC
        ${ZOL_WINDOWS_DEPS}/boost-thread/win32/thread.cpp
        ${ZOL_WINDOWS_DEPS}/boost-thread/win32/thread_primitives.cpp
        # In place of tss_pe.cpp, which Boost's own builds contain. Only a library can say it: the linker
        # of Visual C++ takes tss_pe.obj out of Boost's library, and a second definition is an error.
        ${PROJECT_SOURCE_DIR}/src/ZOL/Platform/windows/TssCleanup.cpp)
    target_compile_features(zol_boost_thread_windows PUBLIC cxx_std_17)
    target_include_directories(zol_boost_thread_windows SYSTEM PUBLIC ${ZOL_WINDOWS_DEPS}/include)
    target_compile_definitions(zol_boost_thread_windows
        PRIVATE BOOST_THREAD_BUILD_LIB
        INTERFACE BOOST_THREAD_USE_LIB
        PUBLIC BOOST_CHRONO_HEADER_ONLY WIN32_LEAN_AND_MEAN)
    target_link_libraries(zol_boost_thread INTERFACE zol_boost_thread_windows)

    target_include_directories(zol_spdlog SYSTEM INTERFACE ${ZOL_WINDOWS_DEPS}/include)
    target_compile_definitions(zol_spdlog INTERFACE SPDLOG_FMT_EXTERNAL)
    target_include_directories(zol_utf8 SYSTEM INTERFACE ${ZOL_WINDOWS_DEPS}/include/utf8cpp)

    foreach(target IN ITEMS zol_command_line zol_json)
        target_include_directories(${target} SYSTEM INTERFACE ${ZOL_WINDOWS_DEPS}/include)
    endforeach()

    if(ZOL_BUILD_BACKENDS)
        # Debian builds it for mingw. The static library, so that no further DLL is shipped. Its headers are
        # beside those of Windows, where the compiler finds them.
        find_library(ZOL_LIBZ libz.a REQUIRED)
        target_link_libraries(zol_zlib INTERFACE ${ZOL_LIBZ})
    endif()
else()
    set(Boost_USE_STATIC_LIBS ${WIN32})
    find_package(Boost 1.74 REQUIRED COMPONENTS thread)
    target_link_libraries(zol_boost_thread INTERFACE Boost::thread)
    if(MSVC)
        # Boost's headers would ask the linker for the libraries again, by names that need not exist.
        target_compile_definitions(zol_boost_thread INTERFACE BOOST_ALL_NO_LIB)
    endif()
    if(NOT WIN32)
        # All that the module uses of it is in its headers. Not every linker leaves a library out then,
        # and every machine would need it.
        target_link_options(zol_boost_thread INTERFACE LINKER:--as-needed)
    endif()

    if(ZOL_BUILD_BACKENDS)
        find_package(spdlog REQUIRED)
        find_package(fmt REQUIRED)
        # Only the include folders: the libraries of Debian are shared, and a back end must load on a
        # machine without them.
        target_include_directories(zol_spdlog SYSTEM INTERFACE
            $<TARGET_PROPERTY:spdlog::spdlog_header_only,INTERFACE_INCLUDE_DIRECTORIES>
            $<TARGET_PROPERTY:fmt::fmt-header-only,INTERFACE_INCLUDE_DIRECTORIES>)
        target_compile_definitions(zol_spdlog INTERFACE SPDLOG_FMT_EXTERNAL)
        if(WIN32)
            # vcpkg has newer releases of fmt than those that Spdlog.cpp is written for.
            target_compile_definitions(zol_spdlog INTERFACE FMT_HEADER_ONLY)
        endif()
        find_package(utf8cpp REQUIRED)
        if(TARGET utf8::cpp)
            target_link_libraries(zol_utf8 INTERFACE utf8::cpp)
        else()
            target_link_libraries(zol_utf8 INTERFACE utf8cpp::utf8cpp) # from its version 4 on
        endif()
        find_package(ZLIB 1.2.13 REQUIRED)
        target_link_libraries(zol_zlib INTERFACE ZLIB::ZLIB)
        if(NOT WIN32)
            # The back ends that write no files load on a machine without it.
            target_link_options(zol_zlib INTERFACE LINKER:--as-needed)
        endif()
    endif()

    if(ZOL_BUILD_TOOLS)
        # Debian has no CMake package of it.
        find_path(ZOL_CLI11_INCLUDE CLI/CLI.hpp REQUIRED)
        target_include_directories(zol_command_line SYSTEM INTERFACE ${ZOL_CLI11_INCLUDE})
        find_package(nlohmann_json REQUIRED)
        target_link_libraries(zol_json INTERFACE nlohmann_json::nlohmann_json)
        if(NOT WIN32)
            find_library(ZOL_LIBELF elf REQUIRED)
            find_path(ZOL_LIBELF_INCLUDE libelf.h REQUIRED)
            target_include_directories(zol_elf SYSTEM INTERFACE ${ZOL_LIBELF_INCLUDE})
            target_link_libraries(zol_elf INTERFACE ${ZOL_LIBELF})
        endif()
    endif()
endif()
