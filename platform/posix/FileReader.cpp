// Read by descriptor, and told from the file that the path leads to now.
#include "platform/FileReader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

struct FileReader::STATE {
    std::string path;
    int nFile = -1;
    std::int64_t position = 0;
};

FileReader::FileReader(const std::string& path, std::int64_t position)
    : m_pState(std::make_unique<STATE>(
          STATE{path, open(path.c_str(), O_RDONLY | O_CLOEXEC), position})) {
    if (position != 0) {
        lseek(m_pState->nFile, position, SEEK_SET);
    }
}

FileReader::~FileReader() {
    if (IsOpen()) {
        close(m_pState->nFile);
    }
}

bool FileReader::IsOpen() const {
    return m_pState->nFile >= 0;
}

std::size_t FileReader::Read(std::span<char> block) {
    ssize_t count = 0;
    do {
        count = read(m_pState->nFile, block.data(), block.size());
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        throw std::system_error(errno, std::generic_category(), "can't read " + m_pState->path);
    }
    m_pState->position += count;
    return static_cast<std::size_t>(count);
}

// The open file keeps its number, so that no new one can have the same.
bool FileReader::IsReplaced() const {
    struct stat opened = {};
    struct stat named = {};
    if (fstat(m_pState->nFile, &opened) != 0 || stat(m_pState->path.c_str(), &named) != 0) {
        return false;  // deleted, with no new one yet
    }
    return opened.st_dev != named.st_dev || opened.st_ino != named.st_ino ||
           (S_ISREG(opened.st_mode) && opened.st_size < m_pState->position);
}
