// What a test takes from its own process for a while, and what it sees of others, on POSIX systems.
#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <limits>
#include <string>
#include <utility>
#include <vector>

/// Lowers a limit of this process for a while.
class Limit {
  public:
    Limit(int resource, rlim_t value) : m_Resource(resource) {
        getrlimit(resource, &m_Former);
        const rlimit lowered{value, m_Former.rlim_max};
        EXPECT_EQ(setrlimit(resource, &lowered), 0);
    }
    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;
    ~Limit() { setrlimit(m_Resource, &m_Former); }

  private:
    int m_Resource;
    rlimit m_Former{};
};

/// The superuser, whom no file's mode stops, is another user for a while. A block that is opened
/// meanwhile is that user's.
class OrdinaryUser {
  public:
    OrdinaryUser() : m_Former(geteuid()) {
        if (m_Former == 0) {
            EXPECT_EQ(seteuid(OTHER_USER), 0);
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (m_Former == 0) {
            EXPECT_EQ(seteuid(m_Former), 0);
        }
    }

  private:
    static constexpr uid_t OTHER_USER = 65534;
    uid_t m_Former;
};

/// All blocks of memory that processes share: who has created each, and its size in bytes. Size and
/// creator are the fourth and fifth columns of the system's table.
inline std::vector<std::pair<pid_t, std::size_t>> Segments() {
    std::ifstream table("/proc/sysvipc/shm");
    EXPECT_TRUE(table.is_open());
    std::vector<std::pair<pid_t, std::size_t>> segments;
    const auto skipLine = [&] { table.ignore(std::numeric_limits<std::streamsize>::max(), '\n'); };
    skipLine();
    std::string word;
    std::size_t size = 0;
    pid_t creator = 0;
    while (table >> word >> word >> word >> size >> creator) {
        segments.emplace_back(creator, size);
        skipLine();
    }
    return segments;
}

/// Does the work in a child, and tells whether that held.
template <class Work>
bool HoldsInChild(const Work& work) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(work() ? 0 : 1);
    }
    int status = -1;
    return waitpid(child, &status, 0) == child && status == 0;
}

/// What this process does on a signal, for a while.
class SignalHandler {
  public:
    SignalHandler(int signal, void (*pHandler)(int)) : m_Signal(signal) {
        struct sigaction action = {};
        action.sa_handler = pHandler;
        EXPECT_EQ(sigaction(signal, &action, &m_Former), 0);
    }
    SignalHandler(const SignalHandler&) = delete;
    SignalHandler& operator=(const SignalHandler&) = delete;
    ~SignalHandler() { sigaction(m_Signal, &m_Former, nullptr); }

  private:
    int m_Signal;
    struct sigaction m_Former = {};
};
