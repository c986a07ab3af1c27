// A block that has no line's end is made longer, up to the longest line.
#include "trace/LineReader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "platform/TextFile.h"
#include "platform/Utf8Path.h"
#include "trace/Trace.h"

static const std::size_t BLOCK_SIZE = 262'144;

static std::string RegularFile(const std::string& path) {
    try {
        RequireRegularFile(PathOf(path));
    } catch (const std::runtime_error& e) {
        throw TraceError(e.what());
    }
    return path;
}

LineReader::LineReader(const std::string& path, std::size_t padding)
    : m_Path(RegularFile(path)),
      m_Padding(padding),
      m_File(m_Path),
      m_Block(BLOCK_SIZE + m_Padding) {
    if (!m_File.IsOpen()) {
        throw TraceError("can't read " + path + ": " + std::generic_category().message(errno));
    }
}

/// Reads on until the next line's end is there.
LineReader::FOUND LineReader::ReadLine() {
    for (;;) {
        const std::size_t held = m_End - m_Begin;
        if (held > LONGEST_LINE) {
            return FOUND::TOO_LONG;
        }
        if (!ReadOn()) {
            return FOUND::END;
        }
        if (Find(held)) {
            return FOUND::LINE;
        }
    }
}

std::size_t LineReader::Room() const {
    return m_Block.size() - static_cast<std::size_t>(m_Text.data() - m_Block.data());
}

/// Moves what was not given yet to the block's start and reads behind it.
bool LineReader::ReadOn() {
    std::copy(
        m_Block.begin() + static_cast<std::ptrdiff_t>(m_Begin),
        m_Block.begin() + static_cast<std::ptrdiff_t>(m_End), m_Block.begin());
    m_End -= m_Begin;
    m_Begin = 0;
    if (m_End + m_Padding == m_Block.size()) {
        m_Block.resize(2 * m_End + m_Padding);
    }
    const std::span<char> rest = std::span(m_Block).subspan(m_End);
    std::size_t count = 0;
    try {
        count = m_File.Read(rest.first(rest.size() - m_Padding));
    } catch (const std::system_error& e) {
        throw TraceError(e.what());
    }
    m_End += count;
    return count > 0;
}
