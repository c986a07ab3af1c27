// A file as a stream, which others may write, rename, delete or replace while it is read.
#pragma once

#include <array>
#include <filesystem>
#include <istream>
#include <streambuf>

#include "platform/FileReader.h"

class FileStream : public std::istream {
  public:
    /// Of a file that can't be opened every read fails.
    explicit FileStream(const std::filesystem::path& path);

  private:
    class Buffer : public std::streambuf {
      public:
        explicit Buffer(const std::filesystem::path& path) : m_File(path.string()) {}
        bool IsOpen() const { return m_File.IsOpen(); }

      protected:
        /// Throws std::system_error, which the stream's own functions take for a read that failed.
        int_type underflow() override;

      private:
        FileReader m_File;
        std::array<char, 16384> m_Block{};
    };

    Buffer m_Buffer;
};
