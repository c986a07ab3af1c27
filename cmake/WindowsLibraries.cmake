# The libraries of the command-line host on Windows, for which the distribution builds none. Two
# are headers alone and serve as they lie on this machine; others are built from their sources,
# which cmake/get-source has put into build/.
foreach(HEADER CLI/CLI.hpp nlohmann/json.hpp)
    cmake_path(GET HEADER PARENT_PATH FOLDER)
    find_path(${FOLDER}_PLACE ${HEADER} REQUIRED NO_CMAKE_FIND_ROOT_PATH PATHS /usr/include)
    # By a link: what else lies there is of this machine's own system.
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/headers)
    file(CREATE_LINK ${${FOLDER}_PLACE}/${FOLDER} ${PROJECT_BINARY_DIR}/headers/${FOLDER} SYMBOLIC)
endforeach()
add_library(CLI11::CLI11 INTERFACE IMPORTED)
add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
target_include_directories(CLI11::CLI11 SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/headers)
target_include_directories(nlohmann_json::nlohmann_json SYSTEM INTERFACE ${PROJECT_BINARY_DIR}/headers)

function(add_from_source LIBRARY FILES)
    set(SOURCE ${PROJECT_SOURCE_DIR}/build/${LIBRARY})
    if(NOT EXISTS ${SOURCE}/src)
        message(FATAL_ERROR
            "there is no ${SOURCE}; cmake/get-source ${LIBRARY} build/${LIBRARY} gets it")
    endif()
    file(GLOB SOURCES ${SOURCE}/src/${FILES})
    add_library(${LIBRARY} STATIC EXCLUDE_FROM_ALL ${SOURCES})
    target_include_directories(${LIBRARY} SYSTEM PUBLIC ${SOURCE}/include PRIVATE ${SOURCE}/src)
    set_target_properties(${LIBRARY} PROPERTIES COMPILE_OPTIONS -w)
endfunction()
add_from_source(yaml-cpp *.cpp)
add_from_source(simdjson simdjson.cpp)  # it includes the others
add_library(simdjson::simdjson ALIAS simdjson)
