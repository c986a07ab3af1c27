// A file that one holder at a time has to itself.
#pragma once

#include <cstdint>
#include <string>

/// Holds from a Take that succeeds to destruction, or to the process's death. Only those who ask
/// for the lock too are kept out: others read and write the file as ever.
class FileLock {
  public:
    FileLock() = default;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    ~FileLock();

    /// Gives false, at once, if somebody else holds the file, in this process or another one. A
    /// holder may replace the file by a new one as the last thing that it does with it: who gets
    /// the lock behind it has the new one. Throws std::system_error, "can't read FILE: ...".
    bool Take(const std::string& path);

  private:
    static constexpr std::intptr_t NOTHING = -1;
    std::intptr_t m_nHeld = NOTHING;  // the system's own number of it
};
