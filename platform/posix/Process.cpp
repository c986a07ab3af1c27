// A child with two pipes.
#include "platform/Process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <stdexcept>

struct Process::STATE {
    pid_t pid = -1;
    int socket = -1;  // the other end is the process's standard input and output
    std::string unread;
    std::optional<int> exitCode;
    int signal = 0;  // that killed it; 0 if none did
};

/// Gives the system's error; 0 if the program runs.
static int Spawn(
    pid_t& pid, const std::string& program, const std::vector<std::string>& arguments,
    int childSocket, const std::string& errorPath) {
    std::vector<char*> argv = {const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) {
        argv.push_back(const_cast<char*>(argument.c_str()));
    }
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, childSocket, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, childSocket, STDOUT_FILENO);
    if (!errorPath.empty()) {
        posix_spawn_file_actions_addopen(
            &actions, STDERR_FILENO, errorPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    }
    // Shells have programs in their background ignore Ctrl-C, and these would pass that on.
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t all;
    sigfillset(&all);
    posix_spawnattr_setsigdefault(&attributes, &all);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    const int error =
        posix_spawn(&pid, program.c_str(), &actions, &attributes, argv.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

Process::Process(
    const std::string& program, const std::vector<std::string>& arguments,
    const std::string& errorPath)
    : m_pState(std::make_unique<STATE>()) {
    int sockets[2] = {-1, -1};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets) != 0) {
        throw std::runtime_error("no socket for " + program);
    }
    m_pState->socket = sockets[0];
    const int error = Spawn(m_pState->pid, program, arguments, sockets[1], errorPath);
    close(sockets[1]);
    if (error != 0) {
        close(m_pState->socket);
        throw std::runtime_error(program + " does not start (error " + std::to_string(error) + ")");
    }
}

Process::~Process() {
    Kill();
    close(m_pState->socket);
}

void Process::WriteLine(const std::string& line) {
    const std::string text = line + "\n";
    // A socket rather than a pipe, so that a process that is gone raises no signal here.
    send(m_pState->socket, text.data(), text.size(), MSG_NOSIGNAL);
}

void Process::CloseInput() {
    shutdown(m_pState->socket, SHUT_WR);
}

std::optional<std::string> Process::ReadLine() {
    std::string& unread = m_pState->unread;
    std::size_t end = unread.find('\n');
    while (end == std::string::npos) {
        char received[4096];
        const ssize_t count = recv(m_pState->socket, received, sizeof(received), 0);
        if (count == -1 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return std::nullopt;
        }
        unread.append(received, static_cast<std::size_t>(count));
        end = unread.find('\n');
    }
    std::string line = unread.substr(0, end);
    unread.erase(0, end + 1);
    return line;
}

int Process::Id() const {
    return m_pState->pid;
}

void Process::Kill() {
    if (!m_pState->exitCode) {
        kill(m_pState->pid, SIGKILL);
        Wait();
    }
}

int Process::Wait() {
    if (!m_pState->exitCode) {
        int status = 0;
        while (waitpid(m_pState->pid, &status, 0) == -1 && errno == EINTR) {
        }
        m_pState->signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
        m_pState->exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    return *m_pState->exitCode;
}

// What it has started may go on, and keep its output open.
void Process::End() {
    kill(m_pState->pid, SIGKILL);
    shutdown(m_pState->socket, SHUT_RD);
}

std::string Process::EndText() {
    const int code = Wait();
    return m_pState->signal == 0
               ? "exit code " + std::to_string(code)
               : "signal " + std::to_string(m_pState->signal) + ", " + strsignal(m_pState->signal);
}
