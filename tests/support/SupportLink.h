// The second camera links of the tests, as files, and a host's folder with one of them.
#pragma once

#include <filesystem>
#include <string>

/// "second_link", "larger_link" or "too_large_link", which differ in the size of their objects.
std::filesystem::path LinkFile(const std::string& name);

/// Writes a second link that lacks one function, and gives the decorated name of that.
std::string WriteLackingLink(const std::filesystem::path& path);

/// A folder "line" in the current directory: the module and a second link under the names that the
/// recorder gives them, the recorder in their places, and an empty folder for recordings.
class RecordedFolder {
  public:
    explicit RecordedFolder(const std::string& link = "second_link");

    std::filesystem::path module;
    std::filesystem::path link;        ///< the recorder ...
    std::filesystem::path linkBehind;  ///< ... and the link
    std::filesystem::path recordings;
};
