// A new file in a former one's place, or in one that is free.
#include "platform/WholeFile.h"

#include <cerrno>
#include <string>
#include <system_error>

#include "platform/LeftFiles.h"
#include "platform/UnfinishedFile.h"

namespace fs = std::filesystem;

/// Where the new file goes; throws if there can be none.
static fs::path Target(const fs::path& path) {
    fs::path target = fs::absolute(BehindLinks(path));
    std::error_code ignored;
    if (fs::is_directory(target, ignored) || !target.has_filename()) {
        throw std::system_error(EISDIR, std::generic_category(), "can't write " + path.string());
    }
    return target;
}

void ReplaceFile(const fs::path& path, std::string_view bytes, OUTLASTS outlasts) {
    if (IsDeviceOrPipe(path)) {
        WriteDevice(path, bytes);
        return;
    }
    CheckWritable(path);
    const fs::path target = Target(path);
    RemoveLeftFiles(target);
    UnfinishedFile file(path, target);
    file.TakeRights();
    file.Write(bytes, outlasts);
    file.Replace();
}

bool MakeFile(const fs::path& path, std::string_view bytes) {
    std::error_code ignored;
    if (fs::exists(fs::symlink_status(path, ignored))) {
        return false;
    }
    const fs::path target = Target(path);
    RemoveLeftFiles(target);
    UnfinishedFile file(path, target);
    file.Write(bytes, OUTLASTS::POWER_FAILURES);
    return file.TakeFreePlace();
}

void CheckReplaceable(const fs::path& path) {
    CheckWritable(path);
    if (IsDeviceOrPipe(path)) {
        return;
    }
    const fs::path target = Target(path);
    RemoveLeftFiles(target);
    UnfinishedFile(path, target).TakeRights();
}
