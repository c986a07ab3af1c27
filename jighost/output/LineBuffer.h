// A standard file as a stream that knows lines, terminals and whether all could be written.
#pragma once

#include <cstddef>
#include <streambuf>
#include <string>
#include <string_view>

class LineBuffer : public std::streambuf {
  public:
    /// One of platform/StandardFiles.h.
    explicit LineBuffer(int nFile) : m_nFile(nFile) {}

    /// The error number of the first write that failed, behind which none is tried; else 0.
    int Error() const { return m_nError; }

  protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* pText, std::streamsize count) override;
    int sync() override;

  private:
    /// Gives what the stream expects: whether nothing has failed so far.
    bool Send(std::string_view text);

    int m_nFile;
    int m_nError = 0;
    std::string m_Text;        // not sent yet: a line whose end has not come
    std::size_t m_Column = 0;  // of the terminal, where it goes on
};
