// All that a module does on the second camera link, as text: each operation once as it is, and then
// again and again with each step of it failing in turn, by all kinds of exceptions.
#pragma once

#include <filesystem>
#include <string>

#include "platform/Platform.h"
#include "tests/secondlink/SecondLink.h"

/// What a library that is loaded already exports for tests.
SECOND_LINK& SecondLinkIn(HMODULE library);

/// Loads the module, runs it in the current directory and unloads it. Results, records, log lines
/// and the link's notes of each run.
std::string Transcript(const std::filesystem::path& module, SECOND_LINK& link);

/// The first line of `made` that is not as in `expected`, with its number; empty if there is none.
std::string FirstDifference(const std::string& expected, const std::string& made);
