// Both ends of a pseudo-terminal.
#include "tests/support/posix/Terminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

Terminal::Terminal() : m_nMaster(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
    grantpt(m_nMaster);
    unlockpt(m_nMaster);
    path = ptsname(m_nMaster);
    m_nSlave = open(path.c_str(), O_RDWR | O_NOCTTY);
    const winsize size = {24, 60, 0, 0};
    EXPECT_EQ(ioctl(m_nSlave, TIOCSWINSZ, &size), 0);
}

Terminal::~Terminal() {
    close(m_nSlave);
    close(m_nMaster);
}

void Terminal::Type(const std::string& text) const {
    EXPECT_EQ(write(m_nMaster, text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

std::string Terminal::ReadUntil(const std::string& lineStart) const {
    std::string all;
    pollfd waiting = {m_nMaster, POLLIN, 0};
    const auto isThere = [&] {
        const std::size_t line = all.find('\n' + lineStart);
        return line != std::string::npos && all.ends_with('\n');
    };
    while (!isThere() && poll(&waiting, 1, 60'000) == 1) {
        char text[4096];
        const ssize_t count = read(m_nMaster, text, sizeof(text));
        all.append(text, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
    return all;
}
