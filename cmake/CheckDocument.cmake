# Fails unless DOCUMENT is what "jighost docs" prints.
execute_process(COMMAND ${JIGHOST} docs OUTPUT_VARIABLE CURRENT COMMAND_ERROR_IS_FATAL ANY)
file(READ ${DOCUMENT} FOUND)
if(NOT FOUND STREQUAL CURRENT)
    message(FATAL_ERROR "${DOCUMENT} is not current; ./dev docs writes it anew")
endif()
