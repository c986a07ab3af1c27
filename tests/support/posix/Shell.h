// What a shell and named pipes give a test of jighost.
#pragma once

#include <string>
#include <vector>

#include "tests/support/SupportJighost.h"

/// As RunProgram for a shell's script, in which "$0" is jighost.
JIGHOST_RUN RunShell(const std::string& script, const std::vector<std::string>& arguments = {});

/// A named pipe in a file's place: who writes it waits while it is full.
class NamedPipe {
  public:
    explicit NamedPipe(const std::string& path);
    ~NamedPipe();
    NamedPipe(const NamedPipe&) = delete;
    NamedPipe& operator=(const NamedPipe&) = delete;

    /// Reads until the text has come, and gives all that came; fails the test if it does not.
    std::string ReadUntil(const std::string& text) const;

  private:
    int m_nPipe = -1;
};
