// Colours on standard output, for people alone.
#pragma once

#include <string>

enum class COLOUR { RED, GREEN };

/// The text in this colour if standard output is a terminal and NO_COLOR is not set; else as it is.
std::string Coloured(const std::string& text, COLOUR colour);
