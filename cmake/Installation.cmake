# Where a Debian user expects what is installed, and the Debian package of it (cpack). Nothing in it
# knows the prefix: program and libraries find each other from the place where they stand.

# The same in build and installation: CMake ends one that it is going to replace with an empty entry,
# which stands for the current directory.
set_target_properties(jighost TuneBench PROPERTIES BUILD_WITH_INSTALL_RPATH ON)
set_target_properties(jighost PROPERTIES INSTALL_RPATH "$ORIGIN;$ORIGIN/../${LIBRARY_FOLDER}")
set_target_properties(TuneBench PROPERTIES INSTALL_RPATH "$ORIGIN")

install(TARGETS jighost RUNTIME DESTINATION bin)
install(TARGETS TuneBench BODYLNK LIBRARY DESTINATION ${LIBRARY_FOLDER})
install(TARGETS recorder_link recorder_module LIBRARY DESTINATION ${LIBRARY_FOLDER}/recorder)
install(FILES share/BoardInf.ini DESTINATION ${SHARE_FOLDER})
install(DIRECTORY sequences DESTINATION ${SHARE_FOLDER})
install(FILES README.md share/copyright DESTINATION share/doc/tunebench)
install(DIRECTORY docs DESTINATION share/doc/tunebench)
install_sdk(${SHARE_FOLDER}/sdk)

# What jighost writes of itself.
set(WRITTEN ${PROJECT_BINARY_DIR}/written)
set(BASH_FOLDER ${WRITTEN}/bash-completion/completions)
set(ZSH_FOLDER ${WRITTEN}/zsh/vendor-completions)
set(FISH_FOLDER ${WRITTEN}/fish/vendor_completions.d)
set(PAGE_FOLDER ${WRITTEN}/man/man1)
set(DOC_FOLDER ${WRITTEN}/doc/tunebench)
add_custom_command(OUTPUT ${WRITTEN}.stamp VERBATIM
    DEPENDS jighost ${PROJECT_SOURCE_DIR}/CHANGELOG.md
    COMMAND rm -rf ${WRITTEN}
    COMMAND mkdir -p ${BASH_FOLDER} ${ZSH_FOLDER} ${FISH_FOLDER} ${PAGE_FOLDER} ${DOC_FOLDER}
    COMMAND jighost completion bash > ${BASH_FOLDER}/jighost
    COMMAND jighost completion zsh > ${ZSH_FOLDER}/_jighost
    COMMAND jighost completion fish > ${FISH_FOLDER}/jighost.fish
    COMMAND jighost manual ${PAGE_FOLDER}
    COMMAND gzip -9nr ${PAGE_FOLDER}
    COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/CHANGELOG.md > ${DOC_FOLDER}/changelog.gz
    COMMAND touch ${WRITTEN}.stamp)
# All that is installed.
add_custom_target(installation ALL DEPENDS ${WRITTEN}.stamp jighost TuneBench
    recorder_link recorder_module)
install(DIRECTORY ${WRITTEN}/ DESTINATION share)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tunebench)
set(CPACK_PACKAGE_CONTACT "TuneBench maintainers <maintainers@tunebench.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "factory functions of a camera, and a bench to run them on")
set(CPACK_PACKAGE_DESCRIPTION
    "TuneBench is a module that gives the factory functions of the T460, a camera\n\
body, fixed names and record forms. With it come a simulated body and jighost,\n\
a bench on the command line that runs operations and sequences, dumps the\n\
adjustment data, reads the module's log and tells why a module can not serve.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# SOCI loads these when a history is opened.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libsoci-sqlite3-4.0, libsoci-postgresql4.0")
include(CPack)
