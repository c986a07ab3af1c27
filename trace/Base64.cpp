// Three bytes are four digits of six bits.
#include "trace/Base64.h"

#include <algorithm>
#include <array>
#include <cstddef>

static constexpr std::string_view DIGITS =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
static const char PADDING = '=';

/// The digits of 12 bits at once: half the look-ups, for blocks of megabytes.
static const auto PAIRS = [] {
    std::array<std::array<char, 2>, 4096> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        pairs[i] = {DIGITS[i / 64], DIGITS[i % 64]};
    }
    return pairs;
}();

static void PutThree(char* pOut, std::uint8_t first, std::uint8_t second, std::uint8_t third) {
    const std::uint32_t bits = std::uint32_t{first} << 16U | std::uint32_t{second} << 8U | third;
    std::copy_n(PAIRS[bits >> 12U].data(), 2, pOut);
    std::copy_n(PAIRS[bits & 0xFFFU].data(), 2, pOut + 2);
}

void AppendBase64(std::string& text, std::span<const std::uint8_t> bytes) {
    const std::size_t start = text.size();
    const std::size_t whole = bytes.size() / 3 * 3;
    text.resize(start + (bytes.size() + 2) / 3 * 4);
    char* pOut = text.data() + start;
    for (std::size_t i = 0; i < whole; i += 3, pOut += 4) {
        PutThree(pOut, bytes[i], bytes[i + 1], bytes[i + 2]);
    }
    const std::size_t rest = bytes.size() - whole;
    if (rest != 0) {
        PutThree(pOut, bytes[whole], rest == 2 ? bytes[whole + 1] : std::uint8_t{0}, 0);
        pOut[2] = rest == 2 ? pOut[2] : PADDING;
        pOut[3] = PADDING;
    }
}

/// Nothing if a character is no digit.
static std::optional<std::uint32_t> ParseFour(std::string_view four) {
    std::uint32_t bits = 0;
    for (const char character : four) {
        const std::size_t digit = DIGITS.find(character);
        if (digit == std::string_view::npos) {
            return std::nullopt;
        }
        bits = bits << 6U | static_cast<std::uint32_t>(digit);
    }
    return bits;
}

std::optional<std::vector<std::uint8_t>> ParseBase64(std::string_view text) {
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with(PADDING) ? 1 : 0;
    std::string digits(text.substr(0, text.size() - padding));
    digits.append(padding, DIGITS[0]);
    std::vector<std::uint8_t> bytes;
    bytes.reserve(digits.size() / 4 * 3);
    for (std::size_t i = 0; i < digits.size(); i += 4) {
        const auto bits = ParseFour(std::string_view(digits).substr(i, 4));
        if (!bits) {
            return std::nullopt;
        }
        for (const unsigned shift : {16U, 8U, 0U}) {
            bytes.push_back(static_cast<std::uint8_t>(*bits >> shift));
        }
    }
    if (digits.size() % 4 != 0) {
        return std::nullopt;
    }
    bytes.resize(bytes.size() - padding);
    return bytes;
}
