// Scripts by which shells complete command lines: commands, options, names of operations and,
// behind "run OPERATION", fields of its record. Where none of these can stand, a file's name does.
#pragma once

#include <string>

#include "jighost/help/CommandText.h"

std::string BashCompletion(const COMMAND_TEXT& program);
std::string ZshCompletion(const COMMAND_TEXT& program);
std::string FishCompletion(const COMMAND_TEXT& program);
std::string PowerShellCompletion(const COMMAND_TEXT& program);
