# Sets, for the back ends that are built:
#   zolBackends   the plug-ins
#   zolCompiled   all targets whose code is part of them or of the framework module

# zol_targets_below(<result> <folder>): the targets of the folder and of its subfolders.
function(zol_targets_below result folder)
    get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
    get_property(folders DIRECTORY ${folder} PROPERTY SUBDIRECTORIES)
    foreach(below IN LISTS folders)
        zol_targets_below(more ${below})
        list(APPEND targets ${more})
    endforeach()
    set(${result} ${targets} PARENT_SCOPE)
endfunction()

set(zolBackends "")
set(zolCompiled ZOL_Framework)
foreach(target zol_registry_access_objects zol_boost_thread_windows zol_backend_check)
    if(TARGET ${target})
        list(APPEND zolCompiled ${target})
    endif()
endforeach()
if(ZOL_BUILD_BACKENDS)
    zol_targets_below(targets ${PROJECT_SOURCE_DIR}/backends)
    foreach(target IN LISTS targets)
        get_target_property(type ${target} TYPE)
        if(type STREQUAL "MODULE_LIBRARY")
            list(APPEND zolBackends ${target})
        endif()
        if(type MATCHES "^(MODULE|OBJECT|STATIC)_LIBRARY$")
            list(APPEND zolCompiled ${target})
        endif()
    endforeach()
endif()
