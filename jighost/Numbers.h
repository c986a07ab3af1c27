// Numbers and bytes as people write them.
#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// A decimal number, or a hexadecimal one behind 0x; nothing if the text is none or does not fit.
template <class Number>
std::optional<Number> ParseNumber(std::string_view text) {
    int base = 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        text.remove_prefix(2);
        base = 16;
    }
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

/// Hexadecimal digits, two for each byte, blanks allowed; nothing if the text is something else.
std::optional<std::vector<std::uint8_t>> ParseHex(std::string_view text);

/// At least `digits` hexadecimal digits.
std::string HexText(std::uint32_t value, std::size_t digits);

/// Bytes as "b5 0d 00".
std::string HexBytes(std::span<const std::uint8_t> bytes);
