// Files that are there as a whole or not at all.
#pragma once

#include <filesystem>
#include <string_view>

/// Puts `bytes` into a file in place of all that it holds. Whatever happens, also if this process
/// is killed or the power fails, the file is the former one or the new one, whole. The new one
/// grows beside it under its name with the process's number behind, which a killed process leaves.
/// Throws std::filesystem::filesystem_error if it can't be done.
void ReplaceFile(const std::filesystem::path& path, std::string_view bytes);
