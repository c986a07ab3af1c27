# The distribution's cross compilers for Windows; TARGET is the prefix of one of them, FORM the
# project's word for it. Their thread model is POSIX, which the standard library's threads need.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${TARGET}-gcc-posix)  # for GoogleTest's project alone
set(CMAKE_CXX_COMPILER ${TARGET}-g++-posix)
set(CMAKE_RC_COMPILER ${TARGET}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${TARGET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../build/wine/${FORM}/run)  # by make-wine
