// A file read in blocks while others may write, delete or replace it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

class FileReader {
  public:
    /// A file that can't be opened is told by IsOpen, with the reason in errno.
    explicit FileReader(const std::string& path);
    ~FileReader();
    FileReader(const FileReader&) = delete;
    FileReader& operator=(const FileReader&) = delete;

    bool IsOpen() const { return m_File >= 0; }

    /// Reads on; gives the number of bytes, 0 at what is the end for now. Throws std::system_error.
    std::size_t Read(std::span<char> block);

    /// Whether the path leads to another file by now, or the file has lost bytes that were read.
    bool IsReplaced() const;

  private:
    std::string m_Path;
    int m_File;
    std::int64_t m_Position = 0;
};
