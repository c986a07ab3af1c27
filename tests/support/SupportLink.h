// The second camera links of the tests, as files.
#pragma once

#include <filesystem>
#include <string>

/// "second_link", "larger_link" or "too_large_link", which differ in the size of their objects.
std::filesystem::path LinkFile(const std::string& name);

/// Writes a second link that lacks one function, and gives the decorated name of that.
std::string WriteLackingLink(const std::filesystem::path& path);
