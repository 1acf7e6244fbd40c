# gdb finds the module's debug information and printers beside it without being asked.
#
# cmake -DPACKAGE=... -DWORK=... -DCOMPILER=... -DGDB=... -DMODULE=<file name> -P CheckGdb.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
run(${COMPILER} -std=c++17 -g -O0 -I${PACKAGE}/include
    ${CMAKE_CURRENT_LIST_DIR}/debugger/Program.cpp -o ${WORK}/program
    -L${PACKAGE}/lib -l:${MODULE} "-Wl,-rpath,${PACKAGE}/lib")
run(${GDB} --batch -nh -iex "add-auto-load-safe-path ${PACKAGE}" -iex "set debuginfod enabled off"
    -ex "break ZOL::Framework::Counting::Counter::reset" -ex run -ex up
    -ex "print text" -ex "print failure" -ex "print logFailure" -ex "print logger" -ex "print counter"
    -ex "info line ZOL::Framework::Counting::Counter::next"
    ${WORK}/program)
foreach(shown IN ITEMS
        "$1 = \"some text\""
        "$2 = \"some failure\""
        "message = \"some loss\", file = \"Some.cpp\", line = 42"
        "name = \"some logger\""
        "text = \"waiting\""
        "$5 = 1\n"
        "src/ZOL/Framework/Counting/Counter.cpp\"")
    string(FIND "${output}" "${shown}" position)
    if(position EQUAL -1)
        message(NOTICE "${output}")
        message(FATAL_ERROR "gdb does not show '${shown}'")
    endif()
endforeach()
