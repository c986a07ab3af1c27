// Digits to bytes and back.
#include "trace/Hex.h"

#include <algorithm>
#include <charconv>
#include <iterator>

std::optional<std::vector<std::uint8_t>> ParseHex(std::string_view text) {
    std::string digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits), [](char character) {
        return character != ' ';
    });
    std::vector<std::uint8_t> bytes(digits.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const char* pDigits = digits.data() + 2 * i;
        const auto [end, error] = std::from_chars(pDigits, pDigits + 2, bytes[i], 16);
        if (error != std::errc() || end != pDigits + 2) {
            return std::nullopt;
        }
    }
    return digits.size() % 2 == 0 ? std::optional(bytes) : std::nullopt;
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
