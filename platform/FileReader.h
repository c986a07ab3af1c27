// A file read in blocks while others write, rename, delete or replace it as if nobody did.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

class FileReader {
  public:
    /// Reads from `position` on. A file that can't be opened is told by IsOpen, with the reason in
    /// errno.
    explicit FileReader(const std::string& path, std::int64_t position = 0);
    ~FileReader();
    FileReader(const FileReader&) = delete;
    FileReader& operator=(const FileReader&) = delete;

    bool IsOpen() const;

    /// Reads on; gives the number of bytes, 0 at what is the end for now. Throws std::system_error.
    std::size_t Read(std::span<char> block);

    /// Whether the path leads to another file by now, or the file has lost bytes that were read.
    bool IsReplaced() const;

  private:
    struct STATE;
    std::unique_ptr<STATE> m_pState;
};
