# Writes HEADER, which names the commit of SOURCE: "unknown" for sources that are no checkout, and
# with "-dirty" behind it where files differ from it. A header that is right already stays as it is.
cmake_minimum_required(VERSION 3.25)
set(COMMIT unknown)
if(EXISTS ${SOURCE}/.git)
    execute_process(COMMAND git --no-optional-locks describe --always --dirty --abbrev=10 --tags
        WORKING_DIRECTORY ${SOURCE} OUTPUT_VARIABLE FOUND OUTPUT_STRIP_TRAILING_WHITESPACE
        RESULT_VARIABLE RESULT ERROR_QUIET)
    if(RESULT EQUAL 0)
        set(COMMIT ${FOUND})
    endif()
endif()
file(CONFIGURE OUTPUT ${HEADER} CONTENT "// Written by each build.
#pragma once

static constexpr char COMMIT[] = \"@COMMIT@\";
" @ONLY)
