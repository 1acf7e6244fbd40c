# zol_add_backend(<Name> <sources>...)
#
# Makes the back-end plug-in <Name>: a module with the file name that Logger::installBackend("<Name>")
# loads, <Name>_r.dll or <Name>_r.so, which exports createBackend and nothing else. The sources
# define
#
#     extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend();
#
# The build fails if they do not. The target is called <Name>; link further libraries to it as to any
# other.

function(zol_add_backend name)
    if(NOT ARGN)
        message(FATAL_ERROR "zol_add_backend(${name}): no sources given")
    endif()
    add_library(${name} MODULE ${ARGN})
    set_target_properties(${name} PROPERTIES PREFIX "" OUTPUT_NAME "${name}_r")
    # Hosts load the same file name in every configuration.
    foreach(config IN LISTS CMAKE_CONFIGURATION_TYPES ITEMS ${CMAKE_BUILD_TYPE})
        string(TOUPPER ${config} config)
        set_target_properties(${name} PROPERTIES ${config}_POSTFIX "")
    endforeach()
    target_link_libraries(${name} PRIVATE ZOL::Framework)
    if(MSVC)
        # createBackend may throw. By default, Visual C++ takes it that no function with the linkage of C does.
        target_compile_options(${name} PRIVATE /EHs /EHc-)
    endif()

    if(WIN32)
        set_target_properties(${name} PROPERTIES SUFFIX ".dll")
        target_sources(${name} PRIVATE ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/backend-exports.def)
    else()
        set(exports ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/backend-exports.map)
        # Visible to the linker, so that only the version script decides what is exported.
        set_target_properties(${name} PROPERTIES
            CXX_VISIBILITY_PRESET default VISIBILITY_INLINES_HIDDEN OFF SUFFIX ".so")
        target_link_options(${name} PRIVATE LINKER:--version-script=${exports})
        set_property(TARGET ${name} APPEND PROPERTY LINK_DEPENDS ${exports})
        # A GNU unique symbol would prevent unloading of the plug-in.
        target_compile_options(${name} PRIVATE
            $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
        # At the end of the folder, when the plug-in has all its link options.
        cmake_language(EVAL CODE "cmake_language(DEFER CALL _zol_require_entry_point [[${name}]])")
    endif()
endfunction()

# _zol_require_entry_point(<plug-in>): the build fails if the plug-in lacks createBackend. GNU ld and
# mold require a symbol with an option that other linkers reject; for those, the exports are checked
# after linking.
function(_zol_require_entry_point name)
    get_target_property(linker ${name} LINKER_TYPE) # of CMake 3.29
    if(linker)
        set(CMAKE_LINKER_TYPE ${linker})
    endif()
    _zol_link_options(options ${name})
    _zol_linker_requires_symbols(accepted "${options}")
    if(accepted)
        target_link_options(${name} PRIVATE LINKER:--require-defined=createBackend)
        return()
    endif()
    if(NOT CMAKE_NM)
        message(FATAL_ERROR "zol_add_backend(${name}): CMAKE_NM is needed to check the exports")
    endif()
    # Like the option above, also takes createBackend from a static library.
    target_link_options(${name} PRIVATE LINKER:--undefined=createBackend)
    add_custom_command(TARGET ${name} POST_BUILD
        COMMAND ${CMAKE_COMMAND} -DMODULE=$<TARGET_FILE:${name}> -DNM=${CMAKE_NM}
            -P ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/CheckBackendExports.cmake
        VERBATIM)
endfunction()

# _zol_link_options(<result> <plug-in>): its link options and those of the libraries that it links.
function(_zol_link_options result name)
    string(TOUPPER "${CMAKE_BUILD_TYPE}" config)
    get_target_property(flags ${name} LINK_FLAGS)
    if(NOT flags)
        set(flags "")
    endif()
    separate_arguments(options UNIX_COMMAND "${CMAKE_CXX_FLAGS_${config}} ${flags}
        ${CMAKE_MODULE_LINKER_FLAGS} ${CMAKE_MODULE_LINKER_FLAGS_${config}}")

    set(seen "")
    set(libraries ${name})
    set(ofTarget "")
    while(libraries)
        list(POP_FRONT libraries library)
        string(REGEX REPLACE "^\\$<LINK_ONLY:(.*)>$" "\\1" library "${library}")
        if(TARGET "${library}" AND NOT library IN_LIST seen)
            list(APPEND seen ${library})
            foreach(property IN ITEMS LINK_OPTIONS LINK_LIBRARIES)
                get_target_property(value ${library} ${ofTarget}${property})
                if(value AND property STREQUAL "LINK_OPTIONS")
                    list(APPEND options ${value})
                elseif(value)
                    list(APPEND libraries ${value})
                endif()
            endforeach()
            set(ofTarget INTERFACE_)
        elseif(library MATCHES "^-|\\$<")
            list(APPEND options "${library}")
        endif()
    endwhile()
    set(${result} "${options}" PARENT_SCOPE)
endfunction()

# _zol_linker_requires_symbols(<result> <link options>): whether the linker that these options select
# accepts --require-defined. FALSE if that is not known.
function(_zol_linker_requires_symbols result options)
    set(${result} FALSE PARENT_SCOPE)
    get_property(severalConfigurations GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
    if(severalConfigurations OR "${options}" MATCHES "\\$<")
        return()
    endif()
    # The options of the plug-in alone, for a program.
    set(CMAKE_EXE_LINKER_FLAGS "")
    set(CMAKE_TRY_COMPILE_TARGET_TYPE EXECUTABLE)
    string(SHA1 question "${CMAKE_CXX_COMPILER} ${CMAKE_CXX_FLAGS} ${CMAKE_LINKER_TYPE} ${options}")
    set(answer ZOL_LINKER_REQUIRES_SYMBOLS_${question})
    if(NOT DEFINED ${answer})
        try_compile(${answer}
            SOURCE_FROM_CONTENT entry.cpp "extern \"C\" void createBackend() {}\nint main() {}\n"
            LINK_OPTIONS ${options} LINKER:--require-defined=createBackend)
    endif()
    set(${result} ${${answer}} PARENT_SCOPE)
endfunction()
