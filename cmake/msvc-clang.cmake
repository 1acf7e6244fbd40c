# Cross build for the binary interface of Visual C++ with Debian's LLVM: clang-cl and lld-link, LLVM's
# standard library linked into each module, Wine's headers, and the runtime libraries that
# scripts/setup.sh all makes out of msvc-clang/. Programs run under Wine, with its C runtime.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(CMAKE_SYSTEM_VERSION 10.0)

# The oldest LLVM that has all of this, as scripts/setup.sh installs it.
file(GLOB zolFolders /usr/lib/llvm-*)
list(SORT zolFolders COMPARE NATURAL)
set(zolLlvm "")
foreach(folder IN LISTS zolFolders)
    string(REGEX REPLACE ".*-" "" version ${folder})
    if(version VERSION_LESS 19)
        continue()
    endif()
    set(complete TRUE)
    foreach(file IN ITEMS bin/clang-cl bin/lld-link bin/llvm-lib bin/llvm-rc bin/llvm-mt bin/llvm-dlltool
            bin/llvm-readobj bin/llvm-undname)
        if(NOT EXISTS ${folder}/${file})
            set(complete FALSE)
        endif()
    endforeach()
    if(complete)
        set(zolLlvm ${folder})
        break()
    endif()
endforeach()
if(NOT zolLlvm)
    message(FATAL_ERROR "no LLVM 19 or newer with clang-cl and lld-link is installed: run scripts/setup.sh all")
endif()

set(zolWineHeaders "")
foreach(folder IN ITEMS /usr/include/wine/wine /usr/include/wine)
    if(EXISTS ${folder}/msvcrt/stdio.h AND EXISTS ${folder}/windows/winnt.h)
        set(zolWineHeaders ${folder})
        break()
    endif()
endforeach()
if(NOT zolWineHeaders)
    message(FATAL_ERROR "Wine's headers are missing: run scripts/setup.sh all")
endif()

set(zolStandins ${CMAKE_CURRENT_LIST_DIR}/msvc-clang)
set(zolDeps ${CMAKE_CURRENT_LIST_DIR}/../build/deps)
if(NOT EXISTS ${zolDeps}/libcxx/include/string)
    message(FATAL_ERROR "libc++'s headers are missing: run scripts/setup.sh all")
endif()

foreach(language IN ITEMS C CXX)
    set(CMAKE_${language}_COMPILER ${zolLlvm}/bin/clang-cl)
    set(CMAKE_${language}_COMPILER_TARGET x86_64-pc-windows-msvc)
endforeach()
set(CMAKE_LINKER ${zolLlvm}/bin/lld-link)
set(CMAKE_AR ${zolLlvm}/bin/llvm-lib)
set(CMAKE_MT ${zolLlvm}/bin/llvm-mt)
set(CMAKE_RC_COMPILER ${zolLlvm}/bin/llvm-rc)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine.sh)

# The standard library is libc++. C and Windows are Wine's headers. absent/ hides headers that Visual
# C++ does not have, headers/ adds what Wine lacks. These are clang's own options, which clang-cl takes
# after /clang:.
set(zolClangOptions
    -nostdinc++
    -nostdlibinc
    -isystem${zolStandins}/absent
    -isystem${zolDeps}/libcxx/include
    -isystem${zolStandins}/headers
    -idirafter${zolWineHeaders}/msvcrt
    -idirafter${zolWineHeaders}/windows
    # libc++ linked in, without linker options in its headers, and with what Boost 1.74 takes from C++14.
    # The framework's headers reject libc++ without the last definition.
    -D_LIBCPP_NO_AUTO_LINK
    -D_LIBCPP_DISABLE_VISIBILITY_ANNOTATIONS
    -D_LIBCPP_ENABLE_CXX17_REMOVED_UNARY_BINARY_FUNCTION
    -DZOL_FRAMEWORK_OTHER_STANDARD_LIBRARY
    # Wine's headers like Microsoft's: wide characters are wchar_t, each kind of handle has its own type,
    # structured exceptions are the compiler's.
    -DWINE_UNICODE_NATIVE
    -DUSE_COMPILER_EXCEPTIONS
    # Numbers are printed with the options that Microsoft's own headers pass since Windows 10 2004: exact
    # ties are rounded to even.
    -D_CRT_INTERNAL_LOCAL_PRINTF_OPTIONS=0x24
    -DSTRICT)
# What find_package finds: the header-only libraries that are linked into build/deps/include, and
# Boost.Thread and zlib built from source.
list(APPEND CMAKE_MODULE_PATH ${zolStandins}/packages)
list(APPEND CMAKE_INCLUDE_PATH ${zolDeps}/include)

list(TRANSFORM zolClangOptions PREPEND /clang: OUTPUT_VARIABLE zolFlags)
list(JOIN zolFlags " " CMAKE_CXX_FLAGS_INIT)
# zlib is in C. GoogleTest's project asks for a compiler of C, and compiles nothing with it.
set(CMAKE_C_FLAGS_INIT
    "/clang:-nostdlibinc /clang:-idirafter${zolWineHeaders}/msvcrt /clang:-idirafter${zolWineHeaders}/windows")

set(CMAKE_RC_FLAGS_INIT "-I${zolWineHeaders}/windows -I${zolWineHeaders}/msvcrt")

# There is no debug runtime.
set(CMAKE_TRY_COMPILE_CONFIGURATION Release)

# Without them, only what is never linked can be built: that is how they are made.
if(EXISTS ${zolDeps}/msvc-clang/lib/msvcrt.lib)
    foreach(kind IN ITEMS EXE SHARED MODULE)
        set(CMAKE_${kind}_LINKER_FLAGS_INIT
            "/libpath:${zolDeps}/msvc-clang/lib /defaultlib:libc++ /defaultlib:msvcp140 /ignore:4217")
    endforeach()
else()
    set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
endif()
