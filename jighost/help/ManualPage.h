// Manual pages, made of the same words as --help, in the language of man(7).
#pragma once

#include <string>

#include "jighost/help/CommandText.h"

/// The page of the program: its commands, each with a page of its own.
std::string ProgramPage(const COMMAND_TEXT& program);

/// The page of one of the program's commands, with those that are part of it.
std::string CommandPage(const COMMAND_TEXT& program, const COMMAND_TEXT& command);
