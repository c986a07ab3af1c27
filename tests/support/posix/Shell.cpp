// The shell gives the program the standard files that a test asks for.
#include "tests/support/posix/Shell.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

JIGHOST_RUN RunShell(const std::string& script, const std::vector<std::string>& arguments) {
    std::vector<std::string> command = {"-c", script, JighostFile()};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return RunProgram("/bin/sh", command);
}

void MakeIrregular(const std::string& path) {
    EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
}

NamedPipe::NamedPipe(const std::string& path) {
    EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
    m_nPipe = open(path.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(fcntl(m_nPipe, F_SETPIPE_SZ, 4096), 4096);
}

NamedPipe::~NamedPipe() {
    close(m_nPipe);
}

std::string NamedPipe::ReadUntil(const std::string& text) const {
    std::string all;
    char chunk[512];
    pollfd waiting = {m_nPipe, POLLIN, 0};
    while (all.find(text) == std::string::npos) {
        const ssize_t count =
            poll(&waiting, 1, 60'000) == 1 ? read(m_nPipe, chunk, sizeof(chunk)) : -1;
        if (count <= 0) {
            ADD_FAILURE() << text << " has not come in\n" << all;
            break;
        }
        all.append(chunk, static_cast<std::size_t>(count));
    }
    return all;
}
