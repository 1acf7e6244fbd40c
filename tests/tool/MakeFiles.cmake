# Makes files that look like plug-ins and are not, from a good plug-in.
#
# cmake -DGOOD=<a plug-in> -DFOLDER=<output folder> -DSUFFIX=<.so or .dll> -P MakeFiles.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake)

file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
file(WRITE ${FOLDER}/Text_r${SUFFIX} "#!/bin/sh\necho I am no library\n")
file(WRITE ${FOLDER}/Empty_r${SUFFIX} "")
file(COPY_FILE ${GOOD} ${FOLDER}/libPrefixed_r${SUFFIX})
file(COPY_FILE ${GOOD} ${FOLDER}/Bare${SUFFIX})

file(SIZE ${GOOD} size)
math(EXPR half "${size} / 2")
run(dd if=${GOOD} of=${FOLDER}/Half_r${SUFFIX} bs=${half} count=1)

# The byte that distinguishes 32 bits from 64: the class of ELF, the processor of PE.
file(COPY_FILE ${GOOD} ${FOLDER}/Narrow_r${SUFFIX})
if(SUFFIX STREQUAL ".dll")
    file(READ ${GOOD} place OFFSET 60 LIMIT 1 HEX)
    math(EXPR place "0x${place} + 4")
    set(bytes "\\114\\001")
    set(foreign "\\177ELF\\002\\001\\001")
else()
    set(place 4)
    set(bytes "\\001")
    set(foreign "MZ\\220\\000\\003")
endif()
run(sh -c "printf '${bytes}' | dd of='${FOLDER}/Narrow_r${SUFFIX}' bs=1 seek=${place} conv=notrunc")
run(sh -c "( printf '${foreign}' && cat '${GOOD}' ) > '${FOLDER}/Foreign_r${SUFFIX}'")
