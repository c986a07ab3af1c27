// Files that are read whole, with a bound on what a hostile one may cost.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

/// Throws std::runtime_error, "can't read PATH: ..." and why, for what is no regular file, such as
/// a device, a pipe or a folder.
void RequireRegularFile(const std::filesystem::path& path);

/// The bytes of a regular file; `limit` is the greatest size in bytes. Throws std::runtime_error,
/// the same way, also for what can't be opened or is larger, also if it grows meanwhile.
std::string ReadTextFile(const std::filesystem::path& path, std::uint64_t limit);
