# Fails if a plug-in does not export createBackend. zol_add_backend runs it after linking if the linker
# has no option for this check.
#
# cmake -DMODULE=<plug-in> -DNM=<nm of the target> -P CheckBackendExports.cmake

execute_process(COMMAND ${NM} --dynamic ${MODULE} OUTPUT_VARIABLE symbols)
if(NOT symbols MATCHES " [TWi] createBackend\n")
    get_filename_component(name ${MODULE} NAME)
    message(FATAL_ERROR "${name} does not export createBackend. Its sources must define\n"
        "  extern \"C\" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend()")
endif()
