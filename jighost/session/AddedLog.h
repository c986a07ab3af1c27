// What the module adds to its log while an operation runs.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class AddedLog {
  public:
    /// Remembers where the log in the current directory ends now.
    AddedLog();

    /// The lines added since, without their ends.
    std::vector<std::string> Lines() const;

  private:
    std::uintmax_t m_Start;
};

/// What stands behind `tag` in the last line that holds it; empty if none does.
std::string LastTextBehind(const std::vector<std::string>& lines, std::string_view tag);

/// Why the operation of these lines failed, by its last error line; empty if there is none.
std::string LastError(const std::vector<std::string>& lines);
