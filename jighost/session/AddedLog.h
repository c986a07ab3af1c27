// What this process's module adds to its log, in the current directory.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "jighost/session/OwnLines.h"

/// There is one at a time: it observes the line prefixes of the camera link.
class AddedLog {
  public:
    /// From now on each line counts, up to the next SimulatedBody::Reset.
    AddedLog();
    AddedLog(const AddedLog&) = delete;
    AddedLog& operator=(const AddedLog&) = delete;
    ~AddedLog();

    /// Why nothing has come since then, though the module has written; empty if something has.
    std::string Problem();

    /// Forgets what has come so far.
    void Begin();

    /// The lines since Begin whose ends have come. Anything but a regular file has none: of a pipe
    /// or a device nothing comes back.
    const OwnLines& ReadOn();

    /// Adds the same lines to others; another thread may do so while the module is at work.
    void AddTo(OwnLines& lines) const;

  private:
    std::uintmax_t m_Position;  // in the file
    OwnLines m_Lines;

    mutable std::mutex m_Mutex;
    std::uintmax_t m_Start = 0;           // in the file, of what has come since Begin
    std::vector<std::string> m_Prefixes;  // of its lines
};

/// What stands behind `tag` in the last line that holds it; empty if none does.
std::string LastTextBehind(const std::vector<std::string>& lines, std::string_view tag);

/// Why the operation of these lines failed, by its last error line; empty if there is none.
std::string LastError(const std::vector<std::string>& lines);
