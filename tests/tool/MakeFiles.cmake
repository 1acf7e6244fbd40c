# Makes files that look like plug-ins and are not, from a good plug-in.
#
# cmake -DGOOD=<a plug-in> -DFOLDER=<output folder> -DSUFFIX=<.so or .dll> -DFAULTY=<another plug-in>
#       -DTOOL=<zol-backend-check> -DLIBRARIES=<its libraries> -DWIDE=<output folder>
#       -DDAMAGE=<command of DamagePlugin.cpp> -P MakeFiles.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake)

file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
file(WRITE ${FOLDER}/Text_r${SUFFIX} "#!/bin/sh\necho I am no library\n")
file(WRITE ${FOLDER}/Empty_r${SUFFIX} "")
file(COPY_FILE ${GOOD} ${FOLDER}/libPrefixed_r${SUFFIX})
file(COPY_FILE ${GOOD} ${FOLDER}/Bare${SUFFIX})
file(MAKE_DIRECTORY ${FOLDER}/Folder_r${SUFFIX})
if(SUFFIX STREQUAL ".so")
    run(mkfifo ${FOLDER}/Fifo_r.so)
    file(CREATE_LINK nowhere ${FOLDER}/Link_r.so SYMBOLIC)
endif()

# The tool with its libraries and plug-ins in a folder whose name is not ASCII.
file(REMOVE_RECURSE ${WIDE})
cmake_path(GET TOOL PARENT_PATH bin)
file(GLOB runtimes ${bin}/libgcc_s* ${bin}/libstdc++* ${bin}/libwinpthread*)
file(COPY ${TOOL} ${LIBRARIES} ${runtimes} ${FAULTY} DESTINATION ${WIDE})
file(COPY_FILE ${GOOD} "${WIDE}/Grüße_r${SUFFIX}")

run(${DAMAGE} ${GOOD} ${FOLDER} ${SUFFIX})
