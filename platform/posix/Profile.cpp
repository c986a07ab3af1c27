// The file is read anew for each value, line by line: it may be of any length and content.
#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>

#include "platform/posix/NativePath.h"
#include "platform/posix/WindowsCalls.h"

namespace {

/// A text file as lines. What a line holds beyond LINE_SIZE bytes is left out.
class LineReader {
  public:
    static constexpr std::size_t LINE_SIZE = 4096;

    explicit LineReader(const char* pszPath);
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;
    ~LineReader();

    /// Gives the next line without its end, valid until the next call; false behind the last one.
    bool Next(std::string_view& line);

  private:
    bool Fill();

    int m_nFile = -1;
    bool m_bRegular = false;
    std::size_t m_position = 0;
    std::size_t m_end = 0;
    char m_block[LINE_SIZE];
    char m_line[LINE_SIZE];
};

LineReader::LineReader(const char* pszPath) {
    char szNative[PATH_MAX];
    if (ToNativePath(pszPath, szNative)) {
        // Not blocking: a named pipe or a device in the file's place is no INI file.
        m_nFile = open(szNative, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
        struct stat info {};
        m_bRegular = fstat(m_nFile, &info) == 0 && S_ISREG(info.st_mode);
    }
}

LineReader::~LineReader() {
    if (m_nFile >= 0) {
        close(m_nFile);
    }
}

bool LineReader::Fill() {
    if (!m_bRegular) {
        return false;
    }
    ssize_t count = 0;
    do {
        count = read(m_nFile, m_block, sizeof m_block);
    } while (count < 0 && errno == EINTR);
    m_position = 0;
    m_end = count > 0 ? static_cast<std::size_t>(count) : 0;
    return m_end > 0;  // an error ends the text
}

bool LineReader::Next(std::string_view& line) {
    std::size_t length = 0;
    bool bAnyByte = false;
    while (m_position < m_end || Fill()) {
        const char character = m_block[m_position++];
        bAnyByte = true;
        if (character == '\n') {
            break;
        }
        if (length < LINE_SIZE) {
            m_line[length++] = character;
        }
    }
    line = std::string_view(m_line, length);
    return bAnyByte;
}

std::string_view Trim(std::string_view text) {
    const std::string_view BLANKS = " \t\r\v\f";
    const std::size_t begin = text.find_first_not_of(BLANKS);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(BLANKS) + 1 - begin);
}

bool EqualsWithoutCase(std::string_view text, std::string_view other) {
    return text.size() == other.size() && strncasecmp(text.data(), other.data(), text.size()) == 0;
}

bool IsSection(std::string_view line) {
    return line.starts_with('[');
}

bool SkipToSection(LineReader& reader, std::string_view section) {
    const std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";
    bool bFirst = true;
    for (std::string_view line; reader.Next(line); bFirst = false) {
        if (bFirst && line.starts_with(BYTE_ORDER_MARK)) {
            line.remove_prefix(BYTE_ORDER_MARK.size());
        }
        line = Trim(line);
        const std::size_t end = line.rfind(']');
        if (IsSection(line) && end != std::string_view::npos &&
            EqualsWithoutCase(line.substr(1, end - 1), section)) {
            return true;
        }
    }
    return false;
}

/// The value at the key within the section that the reader stands in; empty if there is none.
std::string_view FindValue(LineReader& reader, std::string_view key) {
    for (std::string_view line; reader.Next(line);) {
        line = Trim(line);
        if (IsSection(line)) {
            break;  // a later section of the same name does not count
        }
        const std::size_t equals = line.find('=');
        if (equals != std::string_view::npos && !line.starts_with(';') &&
            EqualsWithoutCase(Trim(line.substr(0, equals)), key)) {
            return Trim(line.substr(equals + 1));
        }
    }
    return {};
}

std::string_view WithoutQuotes(std::string_view value) {
    const bool bQuoted = value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
                         value.back() == value.front();
    return bQuoted ? value.substr(1, value.size() - 2) : value;
}

unsigned int TakeRadix(std::string_view& text) {
    const std::string_view prefix = text.substr(0, 2);
    const unsigned int radix = prefix == "0x" ? 16 : prefix == "0o" ? 8 : prefix == "0b" ? 2 : 10;
    text.remove_prefix(radix == 10 ? 0 : prefix.size());
    return radix;
}

/// `radix` or more for what is no digit.
unsigned int DigitValue(char character) {
    const std::string_view DIGITS = "0123456789abcdef";
    const bool bCapital = character >= 'A' && character <= 'F';
    const std::size_t digit =
        DIGITS.find(bCapital ? static_cast<char>(character - 'A' + 'a') : character);
    return digit == std::string_view::npos ? 16 : static_cast<unsigned int>(digit);
}

/// Reads as far as there are digits, modulo 2 to the power 32; 0 where there are none.
/// Of a quoted text the blanks in front count for nothing either.
UINT ParseInteger(std::string_view text) {
    text = Trim(text);
    const bool bNegative = text.starts_with('-');
    text.remove_prefix(bNegative || text.starts_with('+') ? 1 : 0);
    const unsigned int radix = TakeRadix(text);
    UINT value = 0;
    for (const char character : text) {
        const unsigned int digit = DigitValue(character);
        if (digit >= radix) {
            break;
        }
        value = value * radix + digit;
    }
    return bNegative ? 0 - value : value;
}

}  // namespace

UINT GetPrivateProfileIntA(
    const char* pszSection, const char* pszKey, int nDefault, const char* pszPath) {
    LineReader reader(pszPath);
    std::string_view value;
    if (SkipToSection(reader, pszSection)) {
        value = WithoutQuotes(FindValue(reader, pszKey));
    }
    return value.empty() ? static_cast<UINT>(nDefault) : ParseInteger(value);
}
