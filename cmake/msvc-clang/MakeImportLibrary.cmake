# MakeImportLibrary.cmake: makes LIBRARY, the import library of DLLS/NAME.dll, with LLVM's tools.
# Wine's C runtime exports what belongs to Visual C++'s own DLL a second time: that is left out.

set(extension dll)
if(NAME STREQUAL "winspool")
    set(extension drv)
endif()

# exports(<result> <file>): the names that a DLL exports.
function(exports result file)
    execute_process(COMMAND ${LLVM}/bin/llvm-readobj --coff-exports ${file}
        OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "  Name: [^\n]+" names "${output}")
    list(TRANSFORM names REPLACE "  Name: " "")
    set(${result} ${names} PARENT_SCOPE)
endfunction()

exports(names ${DLLS}/${NAME}.${extension})
if(NAME STREQUAL "ucrtbase")
    exports(others ${DLLS}/vcruntime140.dll)
    list(REMOVE_ITEM names ${others})
endif()
list(FILTER names EXCLUDE REGEX "^(DllMain|Dll.*Server|DllGetClassObject|DllCanUnloadNow|DllInstall)$")
list(JOIN names "\n" names)
file(WRITE ${LIBRARY}.def "LIBRARY ${NAME}.${extension}\nEXPORTS\n${names}\n")
execute_process(
    COMMAND ${LLVM}/bin/llvm-dlltool -m i386:x86-64 -d ${LIBRARY}.def -l ${LIBRARY}
    COMMAND_ERROR_IS_FATAL ANY)
