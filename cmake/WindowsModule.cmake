# What the module needs on Windows: its export table, a check of the linked library, and the folder
# that an integrator takes (cpack).
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
    # On x86 the decorated name is the one to export; 64-bit names are not decorated.
    set(SYMBOL _RegisterInitializeFuncList@4)
    if(ARCHITECTURE STREQUAL x64)
        string(APPEND SYMBOL =RegisterInitializeFuncList)
    endif()
    target_link_options(TuneBench PRIVATE /EXPORT:${SYMBOL})
else()
    set(EXPORTS ${PROJECT_SOURCE_DIR}/cmake/WindowsExports.txt)
    set(RUNTIME_DLLS ${GCC_RUNTIME} msvcrt.dll)
    target_sources(TuneBench PRIVATE ${PROJECT_SOURCE_DIR}/module/Exports.${ARCHITECTURE}.def)
    add_resources(TuneBench "Factory functions of the T460")
    # The C++ run-time library, one for all modules, so that an exception passes from one to
    # another. It lies beside them, as it does at the host.
    foreach(DLL ${GCC_RUNTIME})
        execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${DLL}
            OUTPUT_VARIABLE DLL_FILE OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        file(COPY ${DLL_FILE} DESTINATION ${PROJECT_BINARY_DIR})
        install(FILES ${DLL_FILE} DESTINATION .)
    endforeach()
endif()

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
install(TARGETS TuneBench LIBRARY DESTINATION .)
install(FILES share/BoardInf.ini DESTINATION .)
install(FILES docs/operations.md DESTINATION . OPTIONAL)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME TuneBench.t460-windows-${ARCHITECTURE})
include(CPack)
