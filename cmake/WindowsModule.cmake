# What the module needs on Windows: its export table, a check of the linked library, and the folder
# that an integrator takes (cpack).
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(ARCHITECTURE x86)
    set(RUNTIME_DLLS libstdc++-6.dll libgcc_s_dw2-1.dll libwinpthread-1.dll)
else()
    set(ARCHITECTURE x64)
    set(RUNTIME_DLLS libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
endif()

target_sources(TuneBench PRIVATE ${PROJECT_SOURCE_DIR}/module/Exports.${ARCHITECTURE}.def)
set(CHECK ${PROJECT_SOURCE_DIR}/cmake/CheckWindowsModule.cmake)
set(EXPORTS ${PROJECT_SOURCE_DIR}/cmake/WindowsExports.txt)
set_target_properties(TuneBench PROPERTIES LINK_DEPENDS "${CHECK};${EXPORTS}")
add_custom_command(TARGET TuneBench POST_BUILD VERBATIM
    COMMAND ${CMAKE_COMMAND} -D OBJDUMP=${CMAKE_OBJDUMP} -D LIBRARY=$<TARGET_FILE:TuneBench>
        -D EXPORTS=${EXPORTS} "-D RUNTIME_DLLS=${RUNTIME_DLLS}" -P ${CHECK})

# The C++ run-time library, one for all modules, so that an exception passes from one to another.
# It lies beside them, as it does at the host.
foreach(DLL ${RUNTIME_DLLS})
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${DLL}
        OUTPUT_VARIABLE DLL_FILE OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    file(COPY ${DLL_FILE} DESTINATION ${PROJECT_BINARY_DIR})
    install(FILES ${DLL_FILE} DESTINATION .)
endforeach()
# Without BODYLNK.dll: the integrator has the one that reaches the camera.
install(TARGETS TuneBench LIBRARY DESTINATION .)
install(FILES share/BoardInf.ini DESTINATION .)
install(FILES docs/operations.md DESTINATION . OPTIONAL)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME TuneBench.t460-windows-${ARCHITECTURE})
include(CPack)
