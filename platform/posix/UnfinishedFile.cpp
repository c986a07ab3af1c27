// New files that take the place of former ones by renaming, with what those had of rights and
// owner.
#include "platform/UnfinishedFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <system_error>

#include "platform/LeftFiles.h"

namespace fs = std::filesystem;

namespace {

const int MAX_LINKS = 40;  // as many as the system itself follows
const mode_t ALL_RIGHTS = 07777;

[[noreturn]] void Refuse(const fs::path& path, int error) {
    throw std::system_error(error, std::generic_category(), "can't write " + path.string());
}

int NumberOf(std::intptr_t nFile) {
    return static_cast<int>(nFile);
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

}  // namespace

UnfinishedFile::UnfinishedFile(const fs::path& name, const fs::path& target)
    : m_Name(name),
      m_Target(target),
      m_Path(UnfinishedPath(target)),
      m_nFile(open(m_Path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666)) {
    Check(m_Name, NumberOf(m_nFile));
}

UnfinishedFile::~UnfinishedFile() {
    if (m_nFile != -1) {
        close(NumberOf(m_nFile));
    }
    unlink(m_Path.c_str());
}

void UnfinishedFile::TakeRights() const {
    struct stat former = {};
    if (stat(m_Target.c_str(), &former) == -1) {
        return;
    }
    const int nFile = NumberOf(m_nFile);
    struct stat own = {};
    Check(m_Name, fstat(nFile, &own));
    if (former.st_uid != own.st_uid || former.st_gid != own.st_gid) {
        Check(m_Name, fchown(nFile, former.st_uid, former.st_gid));
    }
    Check(m_Name, fchmod(nFile, former.st_mode & ALL_RIGHTS));
}

void UnfinishedFile::Write(std::string_view bytes, OUTLASTS outlasts) {
    const int nFile = NumberOf(m_nFile);
    WriteAll(m_Name, nFile, bytes);
    if (outlasts == OUTLASTS::POWER_FAILURES) {
        Check(m_Name, fsync(nFile));
    }
    m_nFile = -1;
    Check(m_Name, close(nFile));
}

void UnfinishedFile::Replace() const {
    Check(m_Name, rename(m_Path.c_str(), m_Target.c_str()));
}

bool UnfinishedFile::TakeFreePlace() const {
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

void CheckWritable(const fs::path& path) {
    if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == -1 && errno != ENOENT) {
        Refuse(path, errno);
    }
}

static void WriteOpened(const fs::path& path, int nFile, std::string_view bytes, bool bSync) {
    Check(path, nFile);
    try {
        WriteAll(path, nFile, bytes);
        Check(path, bSync ? fdatasync(nFile) : 0);
    } catch (...) {
        close(nFile);
        throw;
    }
    Check(path, close(nFile));
}

void WriteDevice(const fs::path& path, std::string_view bytes) {
    WriteOpened(path, open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC), bytes, false);
}

void AppendToFile(const fs::path& path, std::string_view bytes) {
    WriteOpened(path, open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC), bytes, true);
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
