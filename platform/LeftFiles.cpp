// Names are read back as strictly as they are written: nothing else is ever removed.
#include "platform/LeftFiles.h"

#include <charconv>
#include <cstdint>
#include <string>

#include "platform/Surroundings.h"

namespace fs = std::filesystem;

static const char UNFINISHED[] = ".unfinished-";

fs::path UnfinishedPath(const fs::path& target) {
    fs::path path = target;
    return path += UNFINISHED + std::to_string(ProcessNumber());
}

/// The process by whose number the name of an unfinished file ends; this one's own number is free
/// as long as it has no such file. Nothing else has a name of this form.
static bool IsLeftBehind(const fs::directory_entry& entry, const std::string& start) {
    const std::string name = entry.path().filename().string();
    if (!name.starts_with(start) || !fs::is_regular_file(entry.symlink_status())) {
        return false;
    }
    std::uint32_t process = 0;
    const char* pEnd = name.data() + name.size();
    const auto parsed = std::from_chars(name.data() + start.size(), pEnd, process);
    if (parsed.ec != std::errc() || parsed.ptr != pEnd || process == 0) {
        return false;
    }
    return process == ProcessNumber() || !IsProcessThere(process);
}

void RemoveLeftFiles(const fs::path& target) {
    const std::string start = target.filename().string() + UNFINISHED;
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(target.parent_path(), ignored)) {
        if (IsLeftBehind(entry, start)) {
            fs::remove(entry.path(), ignored);
        }
    }
}
