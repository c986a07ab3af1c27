// jighost in a console: what it shows there, and what a user does to it.
#pragma once

#include <string>
#include <string_view>

#include "platform/Platform.h"

/// A console of 60 columns without a window, and jighost in it.
class Console {
  public:
    /// The words of `line` hold no blanks.
    explicit Console(const std::string& line);
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    ~Console();

    /// What the console shows from here on until it has shown the text, with the sequences that
    /// move about and colour; fails the test if the text does not come.
    std::string ReadUntil(std::string_view text);
    void PressCtrlC();
    /// Waits for the program and gives its exit code.
    int Wait();

  private:
    HPCON m_hConsole = nullptr;
    HANDLE m_hInput = nullptr;
    HANDLE m_hShown = nullptr;
    HANDLE m_hCtrlC = nullptr;
    HANDLE m_hProcess = nullptr;
};
