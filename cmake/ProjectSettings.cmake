# What every target of this project is built with; nothing here reaches a consumer.

add_library(zol_settings INTERFACE)
target_compile_features(zol_settings INTERFACE cxx_std_17)
set(CMAKE_CXX_EXTENSIONS OFF)
# Code of one platform lies in a folder of this name beside the common files.
string(TOLOWER ${CMAKE_SYSTEM_NAME} ZOL_PLATFORM)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
# The file names are part of the binary contract in every configuration.
foreach(config IN LISTS CMAKE_CONFIGURATION_TYPES ITEMS ${CMAKE_BUILD_TYPE})
    string(TOUPPER ${config} config)
    set(CMAKE_${config}_POSTFIX "")
endforeach()

if(MSVC)
    target_compile_options(zol_settings INTERFACE /W4 /WX /permissive- /utf-8 /bigobj)
else()
    target_compile_options(zol_settings INTERFACE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
endif()

# A GNU unique symbol, which Boost and spdlog bring along, would keep a module loaded for ever.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
    add_compile_options(-fno-gnu-unique)
endif()

if(ZOL_SANITIZE)
    add_compile_options(-fsanitize=${ZOL_SANITIZE} -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${ZOL_SANITIZE})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # With its sanitizers, g++ 12 finds that in std::regex.
        add_compile_options(-Wno-maybe-uninitialized)
    endif()
    if(ZOL_SANITIZE MATCHES "undefined")
        add_compile_options(-fno-sanitize-recover=undefined)
    endif()
endif()

# Modules find what lies beside them, the framework its back ends too. Install.cmake sets the run paths
# of what is installed.
if(NOT WIN32)
    set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
    set(CMAKE_BUILD_RPATH "$ORIGIN")
endif()
