// A child with two pipes.
#include "platform/Process.h"

#include <stdexcept>

#include "platform/Platform.h"

struct Process::STATE {
    HANDLE hProcess = nullptr;
    HANDLE hInput = nullptr;  // the ends of the pipes that stay here
    HANDLE hOutput = nullptr;
    std::string unread;
};

namespace {

/// A pipe with one end for a child process, which alone is inherited.
struct PIPE {
    explicit PIPE(bool bChildReads) {
        if (CreatePipe(&hRead, &hWrite, nullptr, 0) == FALSE) {
            throw std::runtime_error("no pipe");
        }
        SetHandleInformation(
            bChildReads ? hRead : hWrite, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    }

    HANDLE hRead = nullptr;
    HANDLE hWrite = nullptr;
};

/// Neither text holds a quotation mark or ends in a backslash.
std::string CommandLine(const std::string& program, const std::vector<std::string>& arguments) {
    std::string line = "\"" + program + "\"";
    for (const std::string& argument : arguments) {
        line += " \"" + argument + "\"";
    }
    return line;
}

}  // namespace

Process::Process(const std::string& program, const std::vector<std::string>& arguments)
    : m_pState(std::make_unique<STATE>()) {
    const PIPE input(true);
    const PIPE output(false);
    m_pState->hInput = input.hWrite;
    m_pState->hOutput = output.hRead;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.hRead;
    startup.hStdOutput = output.hWrite;
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION process{};
    std::string line = CommandLine(program, arguments);
    const BOOL bStarted = CreateProcessA(
        program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
        &process);
    CloseHandle(input.hRead);
    CloseHandle(output.hWrite);
    if (bStarted == FALSE) {
        CloseHandle(input.hWrite);
        CloseHandle(output.hRead);
        throw std::runtime_error(program + " does not start");
    }
    CloseHandle(process.hThread);
    m_pState->hProcess = process.hProcess;
}

Process::~Process() {
    Kill();
    CloseInput();
    CloseHandle(m_pState->hOutput);
    CloseHandle(m_pState->hProcess);
}

void Process::WriteLine(const std::string& line) {
    const std::string text = line + "\n";
    DWORD unWritten = 0;
    WriteFile(m_pState->hInput, text.data(), static_cast<DWORD>(text.size()), &unWritten, nullptr);
}

void Process::CloseInput() {
    if (m_pState->hInput != nullptr) {
        CloseHandle(m_pState->hInput);
        m_pState->hInput = nullptr;
    }
}

std::optional<std::string> Process::ReadLine() {
    std::string& unread = m_pState->unread;
    std::size_t end = unread.find('\n');
    while (end == std::string::npos) {
        char received[4096];
        DWORD unCount = 0;
        if (ReadFile(m_pState->hOutput, received, sizeof received, &unCount, nullptr) == FALSE) {
            return std::nullopt;
        }
        unread.append(received, unCount);
        end = unread.find('\n');
    }
    std::string line = unread.substr(0, end);
    unread.erase(0, end + 1);
    if (line.ends_with('\r')) {
        line.pop_back();
    }
    return line;
}

int Process::Id() const {
    return static_cast<int>(GetProcessId(m_pState->hProcess));
}

void Process::Kill() {
    TerminateProcess(m_pState->hProcess, static_cast<UINT>(-1));
    Wait();
}

int Process::Wait() {
    WaitForSingleObject(m_pState->hProcess, INFINITE);
    DWORD unCode = 0;
    GetExitCodeProcess(m_pState->hProcess, &unCode);
    return static_cast<int>(unCode);
}

void Process::End() {
    TerminateProcess(m_pState->hProcess, static_cast<UINT>(-1));
}

std::string Process::EndText() {
    return "exit code " + std::to_string(Wait());
}
