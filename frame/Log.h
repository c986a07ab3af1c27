// The diagnostic log: a private stream for each source file, one shared buffer, one file.
//
// A source file with operations begins with
//
//     static LogBuffer s_byLogBuffer;
//     static CLogStream s_LogStream(s_byLogBuffer);
//
// writes each line as  BeginLine(s_LogStream) << "[VALU] Name - " << value << '\n';
// and hands its text to the file with FlushLog(s_LogStream, s_byLogBuffer).
//
// Nothing here is locked: the host calls one operation at a time. A failure of the log never
// fails an operation: the text is lost.
#pragma once

#include <array>
#include <cstdint>
#include <ostream>
#include <streambuf>

/// Bytes of each stream's memory and of the shared buffer.
constexpr std::size_t LOG_BUFFER_SIZE = 2'048'000;

/// Memory of one stream; all bytes behind the stream's put position are zero.
using LogBuffer = std::array<char, LOG_BUFFER_SIZE>;

/// Writes into a LogBuffer. Its last byte stays zero; text that does not fit is dropped without
/// setting the stream's failure state, so that the stream goes on after the next flush.
class CLogStreamBuffer : public std::streambuf {
  public:
    explicit CLogStreamBuffer(LogBuffer& buffer);

    std::size_t Position() const { return static_cast<std::size_t>(pptr() - pbase()); }
    void Rewind();

  protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* pText, std::streamsize count) override;
};

/// Target of all lines of one source file. Number base and fill stay as a writer left them, also
/// across lines and flushes; the normal base is decimal.
class CLogStream : public std::ostream {
  public:
    explicit CLogStream(LogBuffer& buffer);

    std::size_t Position() const { return m_Buffer.Position(); }
    void Rewind() { m_Buffer.Rewind(); }

  private:
    CLogStreamBuffer m_Buffer;
};

/// Writes the line prefix, which the camera link gives afresh for each line. What `_gt` throws
/// passes on, with nothing written.
std::ostream& BeginLine(CLogStream& stream);

/// Appends the text written since the last flush to "JigDll.log" in the current directory and
/// leaves the stream empty: one open, one write, one close.
void FlushLog(CLogStream& stream, LogBuffer& buffer) noexcept;

/// Allocates the shared buffer, at attach. Without memory the log drops all text.
void OpenLog() noexcept;

/// Frees the shared buffer, at detach.
void CloseLog() noexcept;
