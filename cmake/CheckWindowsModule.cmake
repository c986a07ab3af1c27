# Fails unless LIBRARY exports the names that stand in the file EXPORTS, one to a line, and nothing
# else, and imports from nothing but RUNTIME_DLLS, the system and the camera link. Looks into the
# library with OBJDUMP, or with DUMPBIN where that is not there.
cmake_minimum_required(VERSION 3.25)

set(IMPORTS_ALLOWED ${RUNTIME_DLLS} KERNEL32.dll BODYLNK.dll)

if(OBJDUMP)
    set(SHOW_HEADERS ${OBJDUMP} -p)
    set(IMPORT "DLL Name: [^\r\n]+")
    set(EXPORT "\t\\[ *[0-9]+\\] [^+][^\r\n]*")
else()
    set(SHOW_HEADERS ${DUMPBIN} /nologo /dependents /exports)
    set(IMPORT "    [^ \r\n]+\\.dll")
    set(EXPORT "[0-9]+ +[0-9A-F]+ [0-9A-F]+ [^ \r\n]+")
endif()
execute_process(COMMAND ${SHOW_HEADERS} ${LIBRARY} OUTPUT_VARIABLE HEADERS
    COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "${IMPORT}" IMPORTS_FOUND "${HEADERS}")
string(REGEX MATCHALL "${EXPORT}" EXPORTS_FOUND "${HEADERS}")
list(TRANSFORM IMPORTS_FOUND REPLACE ".* " "")
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
# The parts of the C run-time library, in which their number and names are the system's.
list(FILTER FOREIGN EXCLUDE REGEX "^api-ms-win-crt-")
expect_none("imports from" ${FOREIGN})
if(NOT "BODYLNK.dll" IN_LIST IMPORTS_FOUND)
    message(FATAL_ERROR "${LIBRARY} does not import from BODYLNK.dll")
endif()
