# Fails unless the decorated names in the file NAMES are those of the functions of the camera link's
# classes that the compiler has put into OBJECTS, no more and no fewer.
cmake_minimum_required(VERSION 3.25)

list(FILTER OBJECTS INCLUDE REGEX "/Link\\.cpp\\.")
execute_process(COMMAND ${NM} --extern-only --defined-only ${OBJECTS} OUTPUT_VARIABLE SYMBOLS
    COMMAND_ERROR_IS_FATAL ANY)
# The 32-bit Windows compiler puts one "_" more in front, which exports do not have.
string(REGEX MATCHALL " T _*Z(N[0-9]+C|3_gt)[^\n]*" MADE "${SYMBOLS}")
list(TRANSFORM MADE REPLACE "^ T _*" "_")
# Not called from outside: constructors and destructors of parts of an object, deleting destructors,
# those of CProperty, and the constructor for the library's own classes.
list(FILTER MADE EXCLUDE REGEX "[CD][02]E|C1EPN|^_ZN9CProperty[CD]1E")
list(SORT MADE)

file(READ ${NAMES} TEXT)
string(REGEX REPLACE "\"[ \n]+\"" "" TEXT "${TEXT}")
string(REGEX MATCHALL "\"_Z[^\"]+\"" WRITTEN "${TEXT}")
list(TRANSFORM WRITTEN REPLACE "\"" "")
list(SORT WRITTEN)

if(NOT MADE OR NOT WRITTEN STREQUAL MADE)
    list(JOIN WRITTEN "\n  " WRITTEN)
    list(JOIN MADE "\n  " MADE)
    message(FATAL_ERROR "${NAMES} has\n  ${WRITTEN}\nbut the compiler makes\n  ${MADE}")
endif()
