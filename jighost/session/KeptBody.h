// The simulated body of a session, and the file that keeps it between runs.
#pragma once

#include <string>

#include "platform/FileLock.h"

class KeptBody {
  public:
    /// Switches the body on, factory-new or, with a path, with the saved values of the file, which
    /// is then this run's alone. Throws EXIT_WRONG_USE for a file that is bad or can't be written,
    /// EXIT_HOST_ERROR if another run keeps it.
    explicit KeptBody(const std::string& path);

    /// Writes the saved values back, the whole file or nothing, if they are others now. The last
    /// thing to be done with a body: from then on other runs may have the file. Throws
    /// EXIT_HOST_ERROR if it can't be written.
    void WriteBack() const;

  private:
    std::string m_Path;  // empty: a body that is forgotten
    FileLock m_Lock;
    std::string m_Text;  // of the file, as it would be written at the start
};
