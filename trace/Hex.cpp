// Digits to bytes and back.
#include "trace/Hex.h"

#include <algorithm>
#include <charconv>
#include <iterator>

static constexpr std::uint8_t NO_DIGIT = 16;

static std::uint8_t DigitOf(char character) {
    const auto code = static_cast<std::uint8_t>(character);
    if (code >= '0' && code <= '9') {
        return static_cast<std::uint8_t>(code - '0');
    }
    const auto letter = static_cast<std::uint8_t>((code | 0x20U) - 'a');
    return letter < 6 ? static_cast<std::uint8_t>(letter + 10) : NO_DIGIT;
}

std::optional<std::vector<std::uint8_t>> ParseHex(std::string_view text) {
    std::vector<std::uint8_t> bytes;
    bytes.reserve(text.size() / 2);
    std::uint8_t high = NO_DIGIT;  // of a byte that has begun
    for (const char character : text) {
        const std::uint8_t digit = DigitOf(character);
        if (character == ' ') {
            continue;
        }
        if (digit == NO_DIGIT) {
            return std::nullopt;
        }
        if (high == NO_DIGIT) {
            high = digit;
        } else {
            bytes.push_back(static_cast<std::uint8_t>(high << 4U | digit));
            high = NO_DIGIT;
        }
    }
    return high == NO_DIGIT ? std::optional(std::move(bytes)) : std::nullopt;
}

void AppendHex(std::string& text, std::span<const std::uint8_t> bytes) {
    static const char DIGITS[] = "0123456789abcdef";
    const char* pszBetween = "";
    for (const std::uint8_t byte : bytes) {
        text += pszBetween;
        text += DIGITS[byte >> 4];
        text += DIGITS[byte & 15];
        pszBetween = " ";
    }
}

std::string HexBytes(std::span<const std::uint8_t> bytes) {
    std::string text;
    text.reserve(3 * bytes.size());
    AppendHex(text, bytes);
    return text;
}
