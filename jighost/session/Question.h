// Questions to whoever sits at the terminal.
#pragma once

#include <optional>
#include <string>

/// Whether somebody can be asked: standard input and standard error are a terminal.
bool CanAsk();

/// Shows the text and takes a line. Nothing if the input has ended or a signal asks the program to
/// end.
std::optional<std::string> Ask(const std::string& text);
