# What an integrator takes for the desk (cpack): jighost with all that it runs on, into desk/. It
# holds a simulated body by the name of the line's camera link, so that line/ stays without it.
install(TARGETS jighost TuneBench BODYLNK RUNTIME DESTINATION desk)
install(TARGETS BODYLNK ARCHIVE DESTINATION sdk/lib)
install(TARGETS recorder_link recorder_module RUNTIME DESTINATION desk/recorder
    LIBRARY DESTINATION desk/recorder)
install(FILES ${RUNTIME_FILES} share/BoardInf.ini DESTINATION desk)
install(DIRECTORY sequences DESTINATION desk)
foreach(LIBRARY yaml-cpp simdjson)
    install(FILES ${PROJECT_SOURCE_DIR}/build/${LIBRARY}/LICENSE DESTINATION licences
        RENAME ${LIBRARY}.txt)
endforeach()
# Of headers alone, which are in jighost all the same.
foreach(PACKAGE libcli11-dev nlohmann-json3-dev)
    install(FILES /usr/share/doc/${PACKAGE}/copyright DESTINATION licences RENAME ${PACKAGE}.txt)
endforeach()

# The manual pages, as texts.
set(PAGES ${PROJECT_BINARY_DIR}/manual)
add_custom_command(OUTPUT ${PAGES}.stamp VERBATIM WORKING_DIRECTORY ${PROJECT_BINARY_DIR}
    DEPENDS jighost
    COMMAND rm -rf roff manual
    COMMAND mkdir roff manual
    COMMAND jighost manual roff
    COMMAND sh -c "for page in roff/*; do groff -man -Tutf8 -P-cbou \"$page\" >\"manual/$(basename \"$page\" .1).txt\" || exit; done"
    COMMAND touch ${PAGES}.stamp)
add_custom_target(manual ALL DEPENDS ${PAGES}.stamp)
install(DIRECTORY ${PAGES} DESTINATION desk)
