// A child with two pipes, which ends with this process at the latest.
#include "platform/Process.h"

#include <algorithm>
#include <stdexcept>

#include "platform/windows/WideText.h"

struct Process::STATE {
    HANDLE hProcess = nullptr;
    HANDLE hJob = nullptr;    // of it and what it starts, all of which end when it is closed
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

/// Quoted so that the child's run-time library finds the argument in it: backslashes count double
/// ahead of a quotation mark, and nowhere else.
std::string Quoted(const std::string& argument) {
    std::string text = "\"";
    std::size_t backslashes = 0;
    for (const char character : argument) {
        text.append(character == '"' ? backslashes + 1 : 0, '\\');
        text += character;
        backslashes = character == '\\' ? backslashes + 1 : 0;
    }
    return text.append(backslashes, '\\') + '"';
}

std::string CommandLine(const std::string& program, const std::vector<std::string>& arguments) {
    std::string line = Quoted(program);
    for (const std::string& argument : arguments) {
        line += ' ' + Quoted(argument);
    }
    return line;
}

/// A new file that a child inherits; without a path, what is standard error here.
HANDLE OpenErrors(const std::string& path) {
    if (path.empty()) {
        return GetStdHandle(STD_ERROR_HANDLE);
    }
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    return CreateFileW(
        WideText(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
        CREATE_ALWAYS, 0, nullptr);
}

HANDLE NewJob() {
    const HANDLE hJob = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(hJob, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return hJob;
}

}  // namespace

Process::Process(
    const std::string& program, const std::vector<std::string>& arguments,
    const std::string& errorPath)
    : m_pState(std::make_unique<STATE>()) {
    const PIPE input(true);
    const PIPE output(false);
    const HANDLE hErrors = OpenErrors(errorPath);
    m_pState->hInput = input.hWrite;
    m_pState->hOutput = output.hRead;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.hRead;
    startup.hStdOutput = output.hWrite;
    startup.hStdError = hErrors;
    PROCESS_INFORMATION process{};
    std::wstring line = WideText(CommandLine(program, arguments));
    const BOOL bStarted = CreateProcessW(
        WideText(program).c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr,
        nullptr, &startup, &process);
    const DWORD unError = GetLastError();
    CloseHandle(input.hRead);
    CloseHandle(output.hWrite);
    if (!errorPath.empty()) {
        CloseHandle(hErrors);
    }
    if (bStarted == FALSE) {
        CloseHandle(input.hWrite);
        CloseHandle(output.hRead);
        throw std::runtime_error(
            program + " does not start (error " + std::to_string(unError) + ")");
    }
    m_pState->hProcess = process.hProcess;
    m_pState->hJob = NewJob();
    AssignProcessToJobObject(m_pState->hJob, process.hProcess);
    ResumeThread(process.hThread);
    CloseHandle(process.hThread);
}

Process::~Process() {
    Kill();
    CloseInput();
    CloseHandle(m_pState->hOutput);
    CloseHandle(m_pState->hProcess);
    CloseHandle(m_pState->hJob);
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
    End();
    Wait();
}

int Process::Wait() {
    WaitForSingleObject(m_pState->hProcess, INFINITE);
    DWORD unCode = 0;
    GetExitCodeProcess(m_pState->hProcess, &unCode);
    return static_cast<int>(unCode);
}

void Process::End() {
    TerminateJobObject(m_pState->hJob, static_cast<UINT>(-1));
}

std::string Process::EndText() {
    return "exit code " + std::to_string(Wait());
}
