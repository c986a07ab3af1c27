# Fails unless the decorated names in the file NAMES are those of the functions of the camera link's
# classes that the compiler has put into OBJECTS, no more and no fewer. A file of the Microsoft
# scheme has pairs of names, of which POINTER_SIZE tells those that are meant.
cmake_minimum_required(VERSION 3.25)

list(FILTER OBJECTS INCLUDE REGEX "/Link\\.cpp\\.")
execute_process(COMMAND ${NM} --extern-only --defined-only ${OBJECTS} OUTPUT_VARIABLE SYMBOLS
    COMMAND_ERROR_IS_FATAL ANY)
file(READ ${NAMES} TEXT)
string(REGEX REPLACE "\"[ \n]+\"" "" TEXT "${TEXT}")

if(TEXT MATCHES "ForWord")
    # libc++ has its classes in std::__1, which takes a number of its own in what is abbreviated.
    string(REPLACE "@__1@" "@" SYMBOLS "${SYMBOLS}")
    string(REPLACE "@D@23@" "@D@2@" SYMBOLS "${SYMBOLS}")
    string(REPLACE "V234@" "V23@" SYMBOLS "${SYMBOLS}")
    string(REGEX MATCHALL " T \\?(\\?[01]C|[A-Za-z]+@C|_gt@)[^\n]*" MADE "${SYMBOLS}")
    list(TRANSFORM MADE REPLACE "^ T " "")
    # Not called from outside: protected constructors and the destructor of CProperty.
    list(FILTER MADE EXCLUDE REGEX "@@I|\\?1CProperty@")
    string(REGEX MATCHALL "\"\\?[^\"]+\",[ \n]*\"[^\"]+\"" WRITTEN "${TEXT}")
    if(POINTER_SIZE EQUAL 4)
        list(TRANSFORM WRITTEN REPLACE "\",.*" "")
    else()
        list(TRANSFORM WRITTEN REPLACE ".*,[ \n]*\"" "")
    endif()
else()
    # The 32-bit Windows compiler puts one "_" more in front, which exports do not have.
    string(REGEX MATCHALL " T _*Z(N[0-9]+C|3_gt)[^\n]*" MADE "${SYMBOLS}")
    list(TRANSFORM MADE REPLACE "^ T _*" "_")
    # Not called from outside: constructors and destructors of parts of an object, deleting
    # destructors, those of CProperty, and the constructor for the library's own classes.
    list(FILTER MADE EXCLUDE REGEX "[CD][02]E|C1EPN|^_ZN9CProperty[CD]1E")
    string(REGEX MATCHALL "\"_Z[^\"]+\"" WRITTEN "${TEXT}")
endif()
list(TRANSFORM WRITTEN REPLACE "\"" "")
list(SORT MADE)
list(SORT WRITTEN)

if(NOT MADE OR NOT WRITTEN STREQUAL MADE)
    list(JOIN WRITTEN "\n  " WRITTEN)
    list(JOIN MADE "\n  " MADE)
    message(FATAL_ERROR "${NAMES} has\n  ${WRITTEN}\nbut the compiler makes\n  ${MADE}")
endif()
