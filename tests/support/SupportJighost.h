// jighost run as a program of its own, beside the tests.
#pragma once

#include <string>
#include <vector>

#include "platform/Process.h"

/// The program's file.
std::string JighostFile();

struct JIGHOST_RUN {
    int exitCode = 0;
    std::string output;  ///< standard output, each line with its end
    std::string errors;  ///< standard error
};

/// Runs it in the current directory to its end; the file errors.txt there is its standard error.
JIGHOST_RUN RunJighost(const std::vector<std::string>& arguments);
