# Runs while the package is installed, with
#   objcopy      the tool of that name that understands the modules
#   destination  the folder, below DESTDIR, where the files are installed
#   debugFiles   where the build tree keeps the files with their debug information

function(run_objcopy)
    execute_process(COMMAND ${objcopy} ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# make_debug_file(<module as it was built>): leaves the path in <debugFile>. Written once for each
# build of the module, because the stripped module holds a checksum of it.
function(make_debug_file module)
    get_filename_component(name ${module} NAME)
    set(file ${debugFiles}/${name}.debug)
    if(${module} IS_NEWER_THAN ${file})
        file(MAKE_DIRECTORY ${debugFiles})
        run_objcopy(--only-keep-debug ${module} ${file})
        file(CHMOD ${file} PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
    endif()
    set(debugFile ${file} PARENT_SCOPE)
endfunction()

function(strip_installed module)
    make_debug_file(${module})
    get_filename_component(name ${module} NAME)
    run_objcopy(--strip-unneeded --remove-section=.gnu_debuglink $ENV{DESTDIR}${destination}/${name})
    run_objcopy(--add-gnu-debuglink=${debugFile} $ENV{DESTDIR}${destination}/${name})
endfunction()

# Libraries whose debug information is not shipped: the compiler's own, and static ones.
function(strip_only library option)
    get_filename_component(name ${library} NAME)
    run_objcopy(${option} $ENV{DESTDIR}${destination}/${name})
endfunction()

function(install_debug_file module)
    make_debug_file(${module})
    file(INSTALL ${debugFile} DESTINATION ${destination})
endfunction()
