// Numbers as people write them.
#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

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

/// A floating-point number; nothing if the text is none.
std::optional<double> ParseDouble(std::string_view text);
/// The same or a whole number as ParseNumber takes it, of any size but infinite.
std::optional<double> ParseQuantity(std::string_view text);

/// The shortest text that gives the number again; without an exponent if it is short so.
std::string NumberText(double number);

/// At least `digits` hexadecimal digits.
std::string HexText(std::uint32_t value, std::size_t digits);
