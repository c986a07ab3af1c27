// A second process: its standard input and output are the caller's.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

class Process {
  public:
    /// Starts a program. It inherits the current directory, the environment and standard error, and
    /// nothing else; standard error goes to a new file instead where a path for it is given. Throws
    /// std::runtime_error if it can't be started.
    Process(
        const std::string& program, const std::vector<std::string>& arguments,
        const std::string& errorPath = "");
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process();  ///< kills the process if it still runs

    /// Writes a line to its input; a process that is gone does not read it.
    void WriteLine(const std::string& line);
    /// Ends its input.
    void CloseInput();
    /// The next line of its output without its end; nothing at the end of the output.
    std::optional<std::string> ReadLine();

    /// The system's number of the process.
    int Id() const;

    /// Ends the process at once, wherever it stands, and waits for its end.
    void Kill();
    /// Has it ended, wherever it stands; does not wait. Another thread may call it while one reads,
    /// which comes to the end of the output even if programs that it has started go on.
    void End();
    /// Waits for the process and gives its exit code; -1 if it was killed.
    int Wait();
    /// Waits for the process and tells how it ended, such as "exit code 3" or the signal's name.
    std::string EndText();

  private:
    struct STATE;
    std::unique_ptr<STATE> m_pState;
};
