# Read by cpack after it has made packages. Removes the scripts that cpack adds to packages with
# libraries. The trigger in packaging/debian does the same, and cannot fail.

foreach(package IN LISTS CPACK_PACKAGE_FILES)
    if(NOT package MATCHES "\\.deb$")
        continue()
    endif()
    set(contents ${CPACK_TEMPORARY_DIRECTORY}/contents)
    file(REMOVE_RECURSE ${contents})
    execute_process(COMMAND dpkg-deb --raw-extract ${package} ${contents} COMMAND_ERROR_IS_FATAL ANY)
    file(GLOB scripts ${contents}/DEBIAN/post*)
    if(scripts)
        file(REMOVE ${scripts})
        execute_process(
            COMMAND dpkg-deb --root-owner-group --build ${contents} ${package}
            OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    endif()
endforeach()
