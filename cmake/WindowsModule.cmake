# What the module needs on Windows: its export table, a check of the linked library, and what an
# integrator takes (cpack): what goes beside the host into line/, what hosts are built from into sdk/.

# Gives a library the module's export whose name the compiler would not give it.
function(export_module_names LIBRARY)
    if(NOT MSVC)
        target_sources(${LIBRARY} PRIVATE ${PROJECT_SOURCE_DIR}/module/Exports.${ARCHITECTURE}.def)
    elseif(ARCHITECTURE STREQUAL x86)
        # The decorated name is the one to export.
        target_link_options(${LIBRARY} PRIVATE /EXPORT:_RegisterInitializeFuncList@4)
    else()
        target_link_options(${LIBRARY} PRIVATE
            /EXPORT:_RegisterInitializeFuncList@4=RegisterInitializeFuncList)
    endif()
endfunction()

if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(ARCHITECTURE x86)
    set(GCC_RUNTIME libstdc++-6.dll libgcc_s_dw2-1.dll libwinpthread-1.dll)
else()
    set(ARCHITECTURE x64)
    set(GCC_RUNTIME libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
endif()

if(MSVC)
    set(EXPORTS ${PROJECT_SOURCE_DIR}/cmake/WindowsExports.msvc-${ARCHITECTURE}.txt)
    set(RUNTIME_DLLS MSVCP140.dll VCRUNTIME140.dll VCRUNTIME140_1.dll)
else()
    set(EXPORTS ${PROJECT_SOURCE_DIR}/cmake/WindowsExports.txt)
    set(RUNTIME_DLLS ${GCC_RUNTIME} msvcrt.dll)
    # The C++ run-time library, one for all modules, so that an exception passes from one to
    # another. It lies beside them, as it does at the host. Nearly all of it are symbols for debuggers.
    foreach(DLL ${GCC_RUNTIME})
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${DLL}
            OUTPUT_VARIABLE DLL_FILE OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        execute_process(COMMAND ${CMAKE_STRIP} -o ${PROJECT_BINARY_DIR}/${DLL} ${DLL_FILE}
            COMMAND_ERROR_IS_FATAL ANY)
        list(APPEND RUNTIME_FILES ${PROJECT_BINARY_DIR}/${DLL})
    endforeach()
    install(FILES /usr/share/doc/gcc-mingw-w64-base/copyright DESTINATION licences RENAME gcc.txt)
    install(FILES /usr/share/common-licenses/GPL-3 DESTINATION licences RENAME gcc-GPL-3.txt)
    install(FILES /usr/share/doc/mingw-w64-common/copyright DESTINATION licences
        RENAME mingw-w64.txt)
endif()

export_module_names(TuneBench)
add_resources(TuneBench "Factory functions of the T460")

# Microsoft's own tools have dumpbin in place of objdump.
if(NOT CMAKE_OBJDUMP)
    find_program(DUMPBIN dumpbin REQUIRED)
endif()
set(CHECK ${PROJECT_SOURCE_DIR}/cmake/CheckWindowsModule.cmake)
set_target_properties(TuneBench PROPERTIES LINK_DEPENDS "${CHECK};${EXPORTS}")
add_custom_command(TARGET TuneBench POST_BUILD VERBATIM
    COMMAND ${CMAKE_COMMAND} -D OBJDUMP=${CMAKE_OBJDUMP} -D DUMPBIN=${DUMPBIN}
        -D LIBRARY=$<TARGET_FILE:TuneBench> -D EXPORTS=${EXPORTS}
        "-D RUNTIME_DLLS=${RUNTIME_DLLS}" -P ${CHECK})

# Without BODYLNK.dll: the integrator has the one that reaches the camera.
install(TARGETS TuneBench RUNTIME DESTINATION line)
install(FILES ${RUNTIME_FILES} share/BoardInf.ini DESTINATION line)
install(FILES README.md DESTINATION .)
install(DIRECTORY docs DESTINATION .)
install(FILES share/copyright DESTINATION licences RENAME TuneBench.txt)
install_sdk(sdk)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME TuneBench.t460-windows-${ARCHITECTURE})
set(CPACK_STRIP_FILES ON)
include(CPack)
