// A second process that holds a shared block, as another program of the line does.
#pragma once

#include <string>

#include "bodylnk/SimulatedBody.h"
#include "platform/Platform.h"
#include "platform/Process.h"

class BlockHolder {
  public:
    BlockHolder();

    /// Opens SHARED_NAME_<name> and its mutex: "created", "existing" or "failed" and a number.
    std::string Open(const std::string& name, std::uint32_t size);
    /// The bytes of the block, as Hex writes them.
    std::string Read() { return Do("read"); }
    void Write(const SimulatedBody::Bytes& bytes);
    /// Writes a text with its zero.
    void WriteText(const std::string& text);

    /// Gives a command (BlockHolder.cpp lists them) and waits for the answer.
    std::string Do(const std::string& command);
    /// Both halves of it, for a command that is to wait.
    void Begin(const std::string& command) { m_Process.WriteLine(command); }
    std::string Answer();

    /// Ends the process at once, with all that it holds.
    void Kill() { m_Process.Kill(); }

  private:
    Process m_Process;
};

/// Takes a block's name for a mutex, so that nobody can open the block.
class NameTaken {
  public:
    explicit NameTaken(const char* pszName) : m_hMutex(CreateMutexA(nullptr, FALSE, pszName)) {}
    NameTaken(const NameTaken&) = delete;
    NameTaken& operator=(const NameTaken&) = delete;
    ~NameTaken() { CloseHandle(m_hMutex); }

  private:
    HANDLE m_hMutex;
};
