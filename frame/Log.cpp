// The shared buffer, and the hand-over of a stream's text to the file.
#include "frame/Log.h"

#include <algorithm>
#include <cstring>
#include <locale>
#include <new>

#include "link/BodyLink.h"
#include "platform/Platform.h"

static const char LOG_FILE_NAME[] = "JigDll.log";

/// The argument that `_gt` always gets.
static const std::uint32_t LINE_PREFIX_KIND = 10;

static char* g_pbyLogBuffer = nullptr;     // LOG_BUFFER_SIZE bytes between attach and detach
static std::uint32_t g_unLogPosition = 0;  // bytes handed over since the file was last written

CLogStreamBuffer::CLogStreamBuffer(LogBuffer& buffer) {
    setp(buffer.data(), buffer.data() + buffer.size() - 1);  // the last byte ends the text
}

void CLogStreamBuffer::Rewind() {
    setp(pbase(), epptr());
}

CLogStreamBuffer::int_type CLogStreamBuffer::overflow(int_type character) {
    return traits_type::not_eof(character);  // full: dropped, and the stream stays good
}

std::streamsize CLogStreamBuffer::xsputn(const char* pText, std::streamsize count) {
    const auto fitting = std::min<std::streamsize>(count, epptr() - pptr());
    std::memcpy(pptr(), pText, static_cast<std::size_t>(fitting));
    pbump(static_cast<int>(fitting));
    return count;
}

CLogStream::CLogStream(LogBuffer& buffer) : std::ostream(nullptr), m_Buffer(buffer) {
    rdbuf(&m_Buffer);
    imbue(std::locale::classic());  // numbers without the host's digit grouping
}

std::ostream& BeginLine(CLogStream& stream) {
    return stream << _gt(LINE_PREFIX_KIND).c_str();
}

void OpenLog() noexcept {
    g_pbyLogBuffer = new (std::nothrow) char[LOG_BUFFER_SIZE];
    if (g_pbyLogBuffer != nullptr) {
        g_pbyLogBuffer[0] = '\0';
        g_unLogPosition = 0;
    }
}

void CloseLog() noexcept {
    delete[] g_pbyLogBuffer;
    g_pbyLogBuffer = nullptr;
}

static bool OpenLogFile(int* pnFile, int openFlags) {
    return _sopen_s(
               pnFile, LOG_FILE_NAME, _O_WRONLY | _O_CREAT | _O_TEXT | openFlags, _SH_DENYNO,
               _S_IREAD | _S_IWRITE) == 0;
}

static void WriteLogFile() {
    int nFile = -1;
    const bool bAppending = OpenLogFile(&nFile, _O_APPEND);
    if (!bAppending) {
        // Only makes sure that the file exists for the next flush: this text is lost.
        if (!OpenLogFile(&nFile, _O_TRUNC)) {
            return;
        }
    } else if (g_pbyLogBuffer != nullptr && g_pbyLogBuffer[0] != '\0') {
        _write(nFile, g_pbyLogBuffer, static_cast<unsigned int>(std::strlen(g_pbyLogBuffer)));
    }
    g_unLogPosition = 0;
    _close(nFile);
}

// The shared buffer holds one text at a time, from its first byte: g_unLogPosition is a count, not
// the place of writing. It grows while the file can't be opened; from LOG_BUFFER_SIZE on the text
// before is tried once more ahead of each new one.
static void AppendLogText(const char* pszText) {
    if (g_pbyLogBuffer == nullptr) {
        return;
    }
    const auto length = static_cast<std::uint32_t>(std::strlen(pszText));
    if (g_unLogPosition + length >= LOG_BUFFER_SIZE) {
        WriteLogFile();
    }
    std::memcpy(g_pbyLogBuffer, pszText, length + 1);
    g_unLogPosition += length;
}

void FlushLog(CLogStream& stream, LogBuffer& buffer) noexcept {
    AppendLogText(buffer.data());
    std::memset(buffer.data(), 0, stream.Position());
    stream.Rewind();
    WriteLogFile();
}
