// UTF-8 decoded byte by byte; overlong forms, surrogates and what lies too high are no characters.
#include "trace/Utf8.h"

#include <algorithm>
#include <cstring>

/// Nothing if eight bytes lie from ' ' to '~': what lies elsewhere has its own highest bit, borrows
/// it or is carried into it.
static std::uint64_t Unprintable(const char* pText) {
    static const std::uint64_t EACH = 0x0101010101010101;
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, pText, sizeof(bytes));
    return (bytes | (bytes - EACH * ' ') | (bytes + EACH)) & (EACH << 7U);
}

bool IsPrintable(std::string_view text) {
    static const std::size_t BLOCK = sizeof(std::uint64_t);
    if (text.size() < BLOCK) {
        return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
    }
    std::uint64_t others = Unprintable(text.data() + text.size() - BLOCK);
    for (std::size_t i = 0; i + BLOCK < text.size(); i += BLOCK) {
        others |= Unprintable(text.data() + i);
    }
    return others == 0;
}

static std::size_t LengthByLead(unsigned lead) {
    if (lead < 0x80) {
        return 1;
    }
    if (lead < 0xC2 || lead > 0xF4) {
        return 0;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/// What fewer bytes could have said, the halves of UTF-16, and what lies behind the last character.
static bool IsForbidden(char32_t code, std::size_t length) {
    return (length == 3 && code < 0x800) || (length == 4 && code < 0x10000) || code > 0x10FFFF ||
           (code >= 0xD800 && code <= 0xDFFF);
}

UTF8_CHARACTER FirstCharacter(std::string_view text) {
    const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const std::size_t length = LengthByLead(byteAt(0));
    if (length == 0 || length > text.size()) {
        return {};
    }
    char32_t code = length == 1 ? byteAt(0) : byteAt(0) & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(i) & 0xC0U) != 0x80) {
            return {};
        }
        code = code << 6U | (byteAt(i) & 0x3FU);
    }
    return IsForbidden(code, length) ? UTF8_CHARACTER{} : UTF8_CHARACTER{code, length};
}
