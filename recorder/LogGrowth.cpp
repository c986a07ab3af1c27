// One call of the system where the log is as it was left.
#include "recorder/LogGrowth.h"

#include <algorithm>

namespace Recorder {

LogGrowth::LogGrowth() : m_Log("JigDll.log") {
    m_Log.Look();
    m_NextLine.end = m_Log.Size();
}

static std::string_view PrefixOf(const LOG_LINE_PLACE& line) {
    return {line.prefix.data(), line.size};
}

LOG_LINE_PLACE LogGrowth::NoteLine(std::string_view prefix) noexcept {
    prefix = prefix.substr(0, m_NextLine.prefix.size());
    if (prefix != PrefixOf(m_NextLine)) {
        m_NextLine.size = prefix.copy(m_NextLine.prefix.data(), prefix.size());
        m_NextLine.before = 0;
    }
    const LOG_LINE_PLACE line = m_NextLine;
    ++m_NextLine.before;
    return line;
}

/// Where the line begins; npos if it is not there.
static std::size_t FindLine(std::string_view text, const LOG_LINE_PLACE& line) {
    const std::string_view prefix = PrefixOf(line);
    std::uint32_t before = line.before;
    std::size_t start = text.find(prefix);
    while (start != std::string_view::npos) {
        const bool bLine = start == 0 || text[start - 1] == '\n';
        if (bLine && before-- == 0) {
            break;
        }
        start = text.find(prefix, start + 1);
    }
    return start;
}

std::string_view LogGrowth::Read(std::uint64_t place) noexcept {
    return {m_Block.data(), m_Log.Read(place, m_Block)};
}

/// The log may be another one or begun anew, and others may have written any amount to it.
std::string_view LogGrowth::ReadAgain(LOG_LINE_PLACE& line) noexcept {
    const bool bOther = m_Log.Look();
    const std::uint64_t size = m_Log.Size();
    const std::uint64_t nearest = size - std::min<std::uint64_t>(size, LONGEST);
    const bool bAnew = bOther || size <= line.end;
    line.end = bAnew ? nearest : std::max(line.end, nearest);
    line.before = bAnew ? 0 : line.before;
    return Read(line.end);
}

GROWN_TEXT LogGrowth::TextFrom(LOG_LINE_PLACE line) noexcept {
    std::string_view text = Read(line.end);
    std::size_t start = FindLine(text, line);
    if (start == std::string_view::npos) {
        text = ReadAgain(line);
        start = FindLine(text, line);
    }
    if (start == std::string_view::npos) {
        start = text.find(PrefixOf(line));  // another host's line was cut off ahead of it
    }
    const std::uint64_t readEnd = line.end + text.size();
    const std::uint64_t end = text.size() < LONGEST ? readEnd : std::max(m_Log.Size(), readEnd);
    m_NextLine.end = end;
    m_NextLine.before = 0;
    return start == std::string_view::npos
               ? GROWN_TEXT()
               : GROWN_TEXT{.text = text.substr(start), .leftOut = end - readEnd};
}

}  // namespace Recorder
