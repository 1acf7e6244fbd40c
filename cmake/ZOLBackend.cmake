# zol_add_backend(<Name> <sources>...)
#
# Makes the back-end plug-in <Name>: a module with the file name that Logger::installBackend("<Name>")
# loads, <Name>_r.dll or <Name>_r.so, which exports createBackend and nothing else. The sources
# define
#
#     extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend();
#
# The target is called <Name>; link further libraries to it as to any other.

include_guard(GLOBAL)

set(_ZOL_BACKEND_FILES ${CMAKE_CURRENT_LIST_DIR})

function(zol_add_backend name)
    if(NOT ARGN)
        message(FATAL_ERROR "zol_add_backend(${name}): no sources given")
    endif()
    add_library(${name} MODULE ${ARGN})
    set_target_properties(${name} PROPERTIES PREFIX "" OUTPUT_NAME "${name}_r")
    target_link_libraries(${name} PRIVATE ZOL::Framework)

    if(WIN32)
        target_sources(${name} PRIVATE ${_ZOL_BACKEND_FILES}/backend-exports.def)
    else()
        # Visible to the linker, so that only the version script decides what is exported.
        set_target_properties(${name} PROPERTIES
            CXX_VISIBILITY_PRESET default VISIBILITY_INLINES_HIDDEN OFF SUFFIX ".so")
        target_link_options(${name} PRIVATE
            "LINKER:--version-script=${_ZOL_BACKEND_FILES}/backend-exports.map")
        set_property(TARGET ${name} APPEND PROPERTY
            LINK_DEPENDS ${_ZOL_BACKEND_FILES}/backend-exports.map)
        # A GNU unique symbol would prevent unloading of the plug-in.
        target_compile_options(${name} PRIVATE
            $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
    endif()
endfunction()
