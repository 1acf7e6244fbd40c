# The runtime libraries of mingw-w64: ZOL_RUNTIME_LIBRARIES, copied beside what is built. They are never
# linked statically: a module with its own copy cannot handle exceptions that another module throws.
set(ZOL_RUNTIME_LIBRARIES "")
if(MINGW)
    separate_arguments(zolLinkFlags UNIX_COMMAND "${CMAKE_SHARED_LINKER_FLAGS}")
    foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
        execute_process(
            COMMAND ${CMAKE_CXX_COMPILER} ${zolLinkFlags} -print-file-name=${dll}
            OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        if(NOT IS_ABSOLUTE "${path}")
            message(FATAL_ERROR "${CMAKE_CXX_COMPILER} cannot find its ${dll}")
        endif()
        file(REAL_PATH ${path} path)
        list(APPEND ZOL_RUNTIME_LIBRARIES ${path})
    endforeach()
    set(folders ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    if(CMAKE_CONFIGURATION_TYPES)
        list(TRANSFORM CMAKE_CONFIGURATION_TYPES PREPEND ${folders}/ OUTPUT_VARIABLE folders)
    endif()
    foreach(folder IN LISTS folders)
        file(COPY ${ZOL_RUNTIME_LIBRARIES} DESTINATION ${folder})
    endforeach()
endif()
