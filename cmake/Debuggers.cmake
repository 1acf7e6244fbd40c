# What debuggers need to show the classes whose contents lie in private blocks.

if(WIN32)
    configure_file(${PROJECT_SOURCE_DIR}/packaging/debugger/ZOL_Framework.natvis.in
        ${PROJECT_BINARY_DIR}/ZOL_Framework.natvis @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/ZOL_Framework.natvis
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zol-framework COMPONENT Development)
    # The linker puts it into the module's debug information, where the debugger finds it unasked.
    if(MSVC)
        target_link_options(ZOL_Framework PRIVATE /NATVIS:${PROJECT_BINARY_DIR}/ZOL_Framework.natvis)
    endif()
else()
    # gdb asks for a file of this name beside each module that it loads.
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/debugger/gdb-printers.py
        DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Debug
        RENAME ${ZOL_MODULE_NAME}${CMAKE_SHARED_LIBRARY_SUFFIX}-gdb.py)
endif()
