// Places seen from the program's own; the build tells those of an installation.
#include "jighost/session/Installation.h"

#include "platform/Program.h"

/// The folder of a file: the program's own unless the file lies in that of an installation.
static std::filesystem::path FolderOf(const char* file, const char* installedFolder) {
    std::error_code error;
    const std::filesystem::path beside = ProgramFolder();
    const std::filesystem::path installed = (beside / installedFolder).lexically_normal();
    return !exists(beside / file, error) && is_directory(installed, error) ? installed : beside;
}

std::filesystem::path OwnModule() {
    return FolderOf(MODULE_FILE_NAME, TUNEBENCH_LIBRARY_FOLDER) / MODULE_FILE_NAME;
}

std::filesystem::path SampleFolder() {
    return FolderOf("BoardInf.ini", TUNEBENCH_SHARE_FOLDER);
}

std::filesystem::path RecorderFolder() {
    return OwnModule().parent_path() / "recorder";
}
