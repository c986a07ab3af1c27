// Patterns of texts: regular expressions as ECMAScript has them. A hostile one costs little time
// and little of the stack.
#pragma once

#include <string>

/// Throws EXIT_WRONG_USE for a pattern that is none, is long, or repeats very often by {N}.
void CheckPattern(const std::string& pattern);

/// Whether the whole text is of a pattern that CheckPattern takes.
bool IsOfPattern(const std::string& text, const std::string& pattern);
