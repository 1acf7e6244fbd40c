# zol_add_backend(<Name> <sources>...)
#
# Makes the back-end plug-in <Name>: a module with the file name that Logger::installBackend("<Name>")
# loads, <Name>_r.dll or <Name>_r.so, which exports createBackend and nothing else. The sources
# define
#
#     extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend();
#
# The target is called <Name>; link further libraries to it as to any other.

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
    endif()
endfunction()
