// Results for people.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The name of an operation's result, such as "RESULT_SUCCESS". A code that is none of the module's
/// own came from an event in the camera or from the link.
std::string ResultName(std::int32_t result);

/// Name and number of an operation's result, such as "RESULT_SUCCESS (0)".
std::string ResultText(std::int32_t result);

/// The result of a name or a number; nothing if the text is neither.
std::optional<std::int32_t> ParseResult(const std::string& text);

/// The names of all results of the module.
std::vector<std::string> ResultNames();
