// New files that take the place of former ones by renaming, with what those had of rights and
// owner.
#include "platform/WholeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <string>
#include <system_error>

namespace fs = std::filesystem;

namespace {

const int MAX_LINKS = 40;  // as many as the system itself follows
const mode_t ALL_RIGHTS = 07777;
const char UNFINISHED[] = ".unfinished-";

[[noreturn]] void Refuse(const fs::path& path, int error) {
    throw std::system_error(error, std::generic_category(), "can't write " + path.string());
}

/// For calls that give -1 and leave the reason in errno.
void Check(const fs::path& path, int nResult) {
    if (nResult == -1) {
        Refuse(path, errno);
    }
}

void WriteAll(const fs::path& path, int nFile, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(nFile, bytes.data(), bytes.size());
        if (count == -1 && errno != EINTR) {
            Refuse(path, errno);
        }
        bytes.remove_prefix(count == -1 ? 0 : static_cast<std::size_t>(count));
    }
}

/// A file beside another one, in whose place it comes as a whole. It is removed if it does not.
class UnfinishedFile {
  public:
    /// `name` is what people call the target.
    UnfinishedFile(const fs::path& name, const fs::path& target)
        : m_Name(name),
          m_Target(target),
          m_Path(target.string() + UNFINISHED + std::to_string(getpid())),
          m_nFile(open(m_Path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666)) {
        Check(m_Name, m_nFile);
    }
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile() {
        if (m_nFile != -1) {
            close(m_nFile);
        }
        unlink(m_Path.c_str());
    }

    /// Gives it owner and rights of the file that it replaces, if there is one.
    void TakeRights() const {
        struct stat former = {};
        if (stat(m_Target.c_str(), &former) == -1) {
            return;
        }
        struct stat own = {};
        Check(m_Name, fstat(m_nFile, &own));
        if (former.st_uid != own.st_uid || former.st_gid != own.st_gid) {
            Check(m_Name, fchown(m_nFile, former.st_uid, former.st_gid));
        }
        Check(m_Name, fchmod(m_nFile, former.st_mode & ALL_RIGHTS));
    }

    void Write(std::string_view bytes, OUTLASTS outlasts) {
        WriteAll(m_Name, m_nFile, bytes);
        if (outlasts == OUTLASTS::POWER_FAILURES) {
            Check(m_Name, fsync(m_nFile));
        }
        const int nFile = m_nFile;
        m_nFile = -1;
        Check(m_Name, close(nFile));
    }

    void Replace() const { Check(m_Name, rename(m_Path.c_str(), m_Target.c_str())); }

    /// Gives false if there is a target.
    bool TakeFreePlace() const {
        const char* pszTarget = m_Target.c_str();
        int nResult = renameat2(AT_FDCWD, m_Path.c_str(), AT_FDCWD, pszTarget, RENAME_NOREPLACE);
        if (nResult == -1 && errno == EINVAL) {
            nResult = link(m_Path.c_str(), pszTarget);  // as network file systems have it
        }
        if (nResult == -1 && errno == EEXIST) {
            return false;
        }
        Check(m_Name, nResult);
        return true;
    }

  private:
    fs::path m_Name;
    fs::path m_Target;
    std::string m_Path;
    int m_nFile;
};

/// The process by whose number the name of an unfinished file ends; this one's own number is free
/// as long as it has no such file. Nothing else has a name of this form.
bool IsLeftBehind(const fs::directory_entry& entry, const std::string& start) {
    const std::string name = entry.path().filename().string();
    if (!name.starts_with(start) || !fs::is_regular_file(entry.symlink_status())) {
        return false;
    }
    pid_t process = 0;
    const char* pEnd = name.data() + name.size();
    const auto parsed = std::from_chars(name.data() + start.size(), pEnd, process);
    if (parsed.ec != std::errc() || parsed.ptr != pEnd || process <= 0) {
        return false;
    }
    return process == getpid() || (kill(process, 0) == -1 && errno == ESRCH);
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

/// Where the new file goes; throws if there can be none.
fs::path Target(const fs::path& path) {
    fs::path target = fs::absolute(BehindLinks(path));
    std::error_code ignored;
    if (fs::is_directory(target, ignored) || !target.has_filename()) {
        Refuse(path, EISDIR);
    }
    return target;
}

/// A file that nobody may write to is not replaced either.
void CheckWritable(const fs::path& path) {
    if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == -1 && errno != ENOENT) {
        Refuse(path, errno);
    }
}

void WriteDevice(const fs::path& path, std::string_view bytes) {
    const int nFile = open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
    Check(path, nFile);
    try {
        WriteAll(path, nFile, bytes);
    } catch (...) {
        close(nFile);
        throw;
    }
    Check(path, close(nFile));
}

}  // namespace

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

bool IsDeviceOrPipe(const fs::path& path) {
    std::error_code ignored;
    return fs::is_other(fs::status(path, ignored));
}

fs::path BehindLinks(fs::path path) {
    std::error_code ignored;
    for (int links = 0; fs::is_symlink(fs::symlink_status(path, ignored)); ++links) {
        if (links == MAX_LINKS) {
            Refuse(path, ELOOP);
        }
        path = path.parent_path() / fs::read_symlink(path);
    }
    return path;
}
