// Files that are there as a whole or not at all, and those that grow and lose nothing.
//
// All functions throw std::system_error, "can't write FILE: ...", for a file that can't be written.
#pragma once

#include <filesystem>
#include <string_view>

/// What a file that is replaced outlasts from the moment on when ReplaceFile is done.
enum class OUTLASTS { KILLS, POWER_FAILURES };

/// Puts `bytes` into a file in place of all that it holds. Whatever happens, also if this process
/// is killed, the file is the former one or the new one, whole; with POWER_FAILURES, which takes
/// the time of a disk, also if the power fails. The file keeps its owner and its rights. A link
/// stays, and the file that it leads to is replaced, or made if there is none. A device or a pipe
/// is written to.
///
/// The new file grows beside the former one as NAME.unfinished-PROCESS. What killed processes have
/// left there under such names is removed.
void ReplaceFile(const std::filesystem::path& path, std::string_view bytes, OUTLASTS outlasts);

/// Makes a file that is not there yet, which outlasts power failures; gives false if anything, be
/// it a link that leads nowhere, has its name. Of several processes that make it at once, one does.
bool MakeFile(const std::filesystem::path& path, std::string_view bytes);

/// Adds to the end of a file that is there; when it is done, that outlasts power failures. If it
/// fails, or this process is killed meanwhile, the first part of the bytes may be there.
void AppendToFile(const std::filesystem::path& path, std::string_view bytes);

/// Throws what ReplaceFile would, as far as that can be known without replacing anything.
void CheckReplaceable(const std::filesystem::path& path);

/// Whether ReplaceFile takes the path for a device or a pipe, which keep what is written to them.
bool IsDeviceOrPipe(const std::filesystem::path& path);

/// Where the links lead that stand at the end of a path, also if there is nothing there.
std::filesystem::path BehindLinks(std::filesystem::path path);
