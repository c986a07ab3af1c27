# What hosts and other modules of a host are built from, as one folder: headers, the import libraries
# on Windows, and two hosts as an example.
function(install_sdk FOLDER)
    file(GLOB HEADERS RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS
        adjustment/*.h clock/*.h features/*.h identity/*.h inspection/*.h)
    # What several operations share inside the module.
    list(REMOVE_ITEM HEADERS features/ImageSetting.h)
    list(APPEND HEADERS frame/EventProcTable.h frame/Registration.h frame/Result.h link/CException.h
        link/SharedMemory.h module/Module.h platform/Export.h platform/Platform.h)
    if(NOT WIN32)
        list(APPEND HEADERS platform/posix/WindowsCalls.h)
    endif()
    foreach(HEADER ${HEADERS})
        cmake_path(GET HEADER PARENT_PATH ROOM)
        install(FILES ${HEADER} DESTINATION ${FOLDER}/include/${ROOM})
    endforeach()
    install(DIRECTORY sdk/example DESTINATION ${FOLDER})
    if(WIN32)
        install(TARGETS TuneBench ARCHIVE DESTINATION ${FOLDER}/lib)
    endif()
endfunction()
