// Read by descriptor, and told from the file that the path leads to now.
#include "platform/FileReader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

FileReader::FileReader(const std::string& path)
    : m_Path(path), m_File(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}

FileReader::~FileReader() {
    if (IsOpen()) {
        close(m_File);
    }
}

std::size_t FileReader::Read(std::span<char> block) {
    ssize_t count = 0;
    do {
        count = read(m_File, block.data(), block.size());
    } while (count < 0 && errno == EINTR);
    if (count < 0) {
        throw std::system_error(errno, std::generic_category(), "can't read " + m_Path);
    }
    m_Position += count;
    return static_cast<std::size_t>(count);
}

// The open file keeps its number, so that no new one can have the same.
bool FileReader::IsReplaced() const {
    struct stat opened = {};
    struct stat named = {};
    if (fstat(m_File, &opened) != 0 || stat(m_Path.c_str(), &named) != 0) {
        return false;  // deleted, with no new one yet
    }
    return opened.st_dev != named.st_dev || opened.st_ino != named.st_ino ||
           (S_ISREG(opened.st_mode) && opened.st_size < m_Position);
}
