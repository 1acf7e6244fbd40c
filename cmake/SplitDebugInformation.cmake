# Runs while the package is installed, with
#   objcopy      the target's objcopy
#   destination  the folder, below DESTDIR, where the files are installed
#   debugFiles   the folder in the build tree for files with debug information

function(run_objcopy)
    execute_process(COMMAND ${objcopy} ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# make_debug_file(<built module>): sets <debugFile>. The file is written once for each build of the
# module, because the stripped module has its checksum.
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

# Libraries whose debug information is not shipped: those of the compiler and static libraries.
function(strip_only library option)
    get_filename_component(name ${library} NAME)
    run_objcopy(${option} $ENV{DESTDIR}${destination}/${name})
endfunction()

function(install_debug_file module)
    make_debug_file(${module})
    file(INSTALL ${debugFile} DESTINATION ${destination})
endfunction()
