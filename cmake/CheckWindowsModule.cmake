# Fails unless LIBRARY exports the names that stand in the file EXPORTS, one to a line, and nothing
# else, and imports from nothing but RUNTIME_DLLS, the system and the camera link.
cmake_minimum_required(VERSION 3.25)

set(IMPORTS_ALLOWED ${RUNTIME_DLLS} KERNEL32.dll msvcrt.dll BODYLNK.dll)

execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE HEADERS
    COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "DLL Name: [^\n]+" IMPORTS_FOUND "${HEADERS}")
list(TRANSFORM IMPORTS_FOUND REPLACE "^DLL Name: " "")
string(REGEX REPLACE ".*\\[Ordinal/Name Pointer\\] Table[^\n]*\n" "" NAMES "${HEADERS}")
string(REGEX MATCHALL "\t\\[ *[0-9]+\\][^\n]+" EXPORTS_FOUND "${NAMES}")
list(TRANSFORM EXPORTS_FOUND REPLACE ".* " "")
file(STRINGS ${EXPORTS} EXPORTS_EXPECTED)

function(expect_none MESSAGE)
    if(ARGN)
        list(JOIN ARGN " " NAMES)
        message(FATAL_ERROR "${LIBRARY} ${MESSAGE}: ${NAMES}")
    endif()
endfunction()

set(TOO_MANY ${EXPORTS_FOUND})
list(REMOVE_ITEM TOO_MANY ${EXPORTS_EXPECTED})
expect_none("exports too much" ${TOO_MANY})
set(MISSING ${EXPORTS_EXPECTED})
list(REMOVE_ITEM MISSING ${EXPORTS_FOUND})
expect_none("does not export" ${MISSING})
set(FOREIGN ${IMPORTS_FOUND})
list(REMOVE_ITEM FOREIGN ${IMPORTS_ALLOWED})
expect_none("imports from" ${FOREIGN})
if(NOT "BODYLNK.dll" IN_LIST IMPORTS_FOUND)
    message(FATAL_ERROR "${LIBRARY} does not import from BODYLNK.dll")
endif()
