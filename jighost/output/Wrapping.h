// Lines broken between words, for terminals, which would cut words in two.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The text with each line of it that is wider than `width` broken at blanks; what goes on stands
/// beneath the line's last column, or else indented. Words that are wider than the terminal stay
/// whole. `column` is where the text goes on, and then where it ends. Colours take no room.
std::string Wrapped(std::string_view text, std::size_t width, std::size_t& column);
