// A file's lines, one after the other, in blocks and with room behind each line for a parser that
// looks at many bytes at once.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileReader.h"

/// Far more than the longest entry: a log line of two megabytes may need six bytes for each of its
/// own.
constexpr std::size_t LONGEST_LINE = 16'000'000;

class LineReader {
  public:
    /// Behind each line that many bytes may be read, though nobody knows what they are. Throws
    /// TraceError for what can't be opened or is no regular file.
    LineReader(const std::string& path, std::size_t padding);

    enum class FOUND { LINE, END, TOO_LONG };
    /// The next whole line, without its end, is Text until the next call.
    FOUND Next() {
        const FOUND found = Find(0) ? FOUND::LINE : ReadLine();
        return found == FOUND::LINE && m_Text.size() > LONGEST_LINE ? FOUND::TOO_LONG : found;
    }
    std::string_view Text() const { return m_Text; }
    /// Bytes from the line's start that may be read.
    std::size_t Room() const;

  private:
    /// Takes the next line if the block has its end, `looked` bytes behind its start or later.
    bool Find(std::size_t looked) {
        const char* pStart = m_Block.data() + m_Begin;
        const void* pEnd = std::memchr(pStart + looked, '\n', m_End - m_Begin - looked);
        if (pEnd == nullptr) {
            return false;
        }
        m_Text = {pStart, static_cast<const char*>(pEnd)};
        m_Begin += m_Text.size() + 1;
        return true;
    }
    FOUND ReadLine();
    bool ReadOn();

    std::string m_Path;
    std::size_t m_Padding;
    FileReader m_File;
    std::vector<char> m_Block;
    std::size_t m_Begin = 0;  // what was not given yet, in the block
    std::size_t m_End = 0;
    std::string_view m_Text;
};
