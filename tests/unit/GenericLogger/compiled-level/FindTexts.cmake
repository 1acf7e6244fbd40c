# Checks that the object file OBJECT contains the texts of the statements that are compiled, and none of
# those that are removed.

cmake_minimum_required(VERSION 3.25)

file(STRINGS ${OBJECT} removed REGEX "removed (ZOL_LOG|_EVERY_N|_FIRST_N|_ONCE|_EVERY|_IF|_HERE)")
file(STRINGS ${OBJECT} compiled REGEX "compiled (ZOL_LOG|_EVERY_N|_FIRST_N|_ONCE|_EVERY|_IF|number)")
list(LENGTH compiled count)
if(removed OR NOT count EQUAL 7)
    message(FATAL_ERROR "${OBJECT} contains ${count} of 7 compiled statements, and these: ${removed}")
endif()
