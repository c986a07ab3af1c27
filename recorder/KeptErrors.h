// What a failed call leaves for the next one to ask for.
#pragma once

#include <cerrno>

#include "platform/Platform.h"

namespace Recorder {

/// What the recorder calls of the system in between leaves no trace in it: host, module and camera
/// link find their own last errors.
class KeptErrors {
  public:
    KeptErrors() = default;
    KeptErrors(const KeptErrors&) = delete;
    KeptErrors& operator=(const KeptErrors&) = delete;
    ~KeptErrors() {
        SetLastError(m_LastError);
        errno = m_nError;
    }

  private:
    int m_nError = errno;
    DWORD m_LastError = GetLastError();
};

}  // namespace Recorder
