// Rows of lists that have millions of them, put together in place.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

/// 00 to 99: a division for two digits at once.
constexpr auto DIGIT_PAIRS = [] {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < pairs.size() / 2; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}();

/// Puts a number's last digits ahead of the place.
inline void PutDigits(char* pEnd, std::size_t count, std::uint64_t number) {
    for (; count >= 2; count -= 2, number /= 100) {
        pEnd -= 2;
        std::copy_n(&DIGIT_PAIRS[2 * static_cast<std::size_t>(number % 100)], 2, pEnd);
    }
    if (count > 0) {
        *--pEnd = static_cast<char>('0' + number % 10);
    }
}

class RowWriter {
  public:
    /// The row comes behind the text, which has it when the writer goes, and has at most so many
    /// characters.
    RowWriter(std::string& text, std::size_t most) : m_Text(text) {
        const std::size_t start = text.size();
        m_Text.append(most, ' ');
        m_pNext = m_Text.data() + start;
    }
    ~RowWriter() { m_Text.resize(static_cast<std::size_t>(m_pNext - m_Text.data())); }
    RowWriter(const RowWriter&) = delete;
    RowWriter& operator=(const RowWriter&) = delete;

    void Put(std::string_view text) { m_pNext = std::copy(text.begin(), text.end(), m_pNext); }
    /// With blanks behind it.
    void PutLeft(std::string_view text, std::size_t width) {
        char* pEnd = m_pNext + std::max(width, text.size());
        Put(text);
        m_pNext = pEnd;
    }
    /// With blanks ahead of it.
    void PutRight(std::uint64_t number, std::size_t width) {
        static const std::size_t MOST = 20;  // digits, of the greatest one
        std::size_t digits = 1;
        for (std::uint64_t limit = 10; number >= limit && digits < MOST; limit *= 10) {
            ++digits;
        }
        m_pNext += std::max(width, digits);
        PutDigits(m_pNext, digits, number);
    }
    /// A number's last digits, with zeros ahead of it.
    void PutLast(std::uint64_t number, std::size_t digits) {
        m_pNext += digits;
        PutDigits(m_pNext, digits, number);
    }

  private:
    std::string& m_Text;
    char* m_pNext;
};
