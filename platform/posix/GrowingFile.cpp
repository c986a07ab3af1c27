// By the system's own calls: one for each line.
#include "platform/GrowingFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/FileSizeLimit.h"

int GrowingFile::Create(const std::filesystem::path& path) {
    Close();
    LookForLimit();
    m_nFile = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC, 0666);
    return m_nFile == -1 ? errno : 0;
}

// The system tells of a limit that is passed by a signal, which is not for the program to get.
void GrowingFile::LookForLimit() {
    m_Limit = FileSizeLimit();
}

int GrowingFile::Write(std::string_view text) {
    if (text.size() > m_Limit || m_Size > m_Limit - text.size()) {
        return EFBIG;
    }
    std::string_view rest = text;
    while (!rest.empty()) {
        const ssize_t count = write(m_nFile, rest.data(), rest.size());
        if (count == -1 && errno != EINTR) {
            const int nError = errno;
            [[maybe_unused]] const int nCut = ftruncate(m_nFile, static_cast<off_t>(m_Size));
            return nError;
        }
        rest.remove_prefix(count == -1 ? 0 : static_cast<std::size_t>(count));
    }
    m_Size += text.size();
    return 0;
}

void GrowingFile::Close() {
    if (m_nFile != -1) {
        close(m_nFile);
    }
    m_nFile = -1;
    m_Size = 0;
}
