# The libraries of the command-line host on Windows, for which the distribution builds none. Two
# are headers alone and serve as they lie on this machine; the one for YAML is built from its
# source, which cmake/get-source has put into build/.
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

set(YAML_SOURCE ${PROJECT_SOURCE_DIR}/build/yaml-cpp)
if(NOT EXISTS ${YAML_SOURCE}/src)
    message(FATAL_ERROR "there is no ${YAML_SOURCE}; cmake/get-source yaml-cpp build/yaml-cpp gets it")
endif()
file(GLOB YAML_SOURCES ${YAML_SOURCE}/src/*.cpp)
add_library(yaml-cpp STATIC EXCLUDE_FROM_ALL ${YAML_SOURCES})
target_include_directories(yaml-cpp SYSTEM PUBLIC ${YAML_SOURCE}/include)
set_target_properties(yaml-cpp PROPERTIES COMPILE_OPTIONS -w)
