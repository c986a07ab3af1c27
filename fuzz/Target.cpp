// Files are descriptors of memory: they have a path, and nothing of them stays.
#include "fuzz/Target.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "jighost/text/HostError.h"

void Require(bool bHolds, std::string_view subject, std::string_view rule) {
    if (!bHolds) {
        std::fprintf(
            stderr, "%.*s: %.*s\n", static_cast<int>(subject.size()), subject.data(),
            static_cast<int>(rule.size()), rule.data());
        std::abort();
    }
}

InputFile::InputFile(std::string_view bytes) : m_nFile(memfd_create("input", MFD_CLOEXEC)) {
    if (write(m_nFile, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
        std::perror("the input as a file");
        std::exit(EXIT_FAILURE);
    }
}

InputFile::~InputFile() {
    close(m_nFile);
}

std::string InputFile::Path() const {
    return "/proc/self/fd/" + std::to_string(m_nFile);
}

bool IsTaken(const InputFile& file, const std::function<void(const std::string& path)>& read) {
    const std::string path = file.Path();
    try {
        read(path);
        return true;
    } catch (const HostError& e) {
        Require(e.exitCode == EXIT_WRONG_USE, e.what(), "is no wrong use");
        std::istringstream lines(e.what());
        std::size_t count = 0;
        for (std::string line; std::getline(lines, line); ++count) {
            Require(line.find(path) != std::string::npos, line, "does not name the file");
            Require(PlainText(line) == line, line, "is not plain");
        }
        Require(count > 0, path, "was refused without a text");
        return false;
    }
}
