# What Windows shows of a file, and what programs ask of it: the version of each library and
# program, and UTF-8 for all that a program reads and names.
enable_language(RC)

function(add_resources TARGET DESCRIPTION)
    get_target_property(TYPE ${TARGET} TYPE)
    set(IS_PROGRAM 0)
    if(TYPE STREQUAL EXECUTABLE)
        set(IS_PROGRAM 1)
    endif()
    string(REPLACE . , VERSION_NUMBERS ${PROJECT_VERSION})
    set(RESOURCES ${CMAKE_CURRENT_BINARY_DIR}/${TARGET}.rc)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/Resources.rc.in ${RESOURCES} @ONLY)
    target_sources(${TARGET} PRIVATE ${RESOURCES})
    set_source_files_properties(${RESOURCES} PROPERTIES
        OBJECT_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/Program.manifest)
endfunction()
