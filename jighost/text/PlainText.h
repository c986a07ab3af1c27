// Text from elsewhere, made harmless on its way to a terminal or a page: from files, file names,
// the camera link, the command line.
#pragma once

#include <string>
#include <string_view>

/// Whether a character steers a terminal, hides or turns others around.
bool IsHarmful(char32_t code);

/// The text on one line, with nothing in it that steers a terminal: control characters, characters
/// that hide or turn others around, and bytes that are no UTF-8 stand as \xNN, byte for byte, and
/// so do the characters of `escaped`. All other characters stay as they are.
std::string PlainText(std::string_view text, std::string_view escaped = "");
