// A terminal with nobody at it, for a test to type and to read.
#pragma once

#include <string>

/// A terminal of 60 columns.
class Terminal {
  public:
    Terminal();
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    void Type(const std::string& text) const;
    /// Reads until a line that begins like this has come, and gives all that came.
    std::string ReadUntil(const std::string& lineStart) const;

    std::string path;

  private:
    int m_nMaster;
    int m_nSlave = -1;
};
