// A file that this process alone writes, line by line, while others read it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

class GrowingFile {
  public:
    GrowingFile() = default;
    GrowingFile(const GrowingFile&) = delete;
    GrowingFile& operator=(const GrowingFile&) = delete;
    ~GrowingFile() { Close(); }

    // Each gives 0 or the error number of what failed.

    /// Makes a new file; EEXIST if there is one already. One that is open is closed first.
    int Create(const std::filesystem::path& path);
    /// Hands the text to the system, all of it or, on failure, nothing.
    int Write(std::string_view text);
    void Close();

    /// Finds out how large files may become by now. Where the program changes that itself, this
    /// comes ahead of the next Write.
    void LookForLimit();

    bool IsOpen() const { return m_nFile != -1; }
    std::uint64_t Size() const { return m_Size; }

  private:
    int m_nFile = -1;
    std::uint64_t m_Size = 0;
    std::uint64_t m_Limit = 0;
};
