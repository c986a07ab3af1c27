// Numbers as digits.
#include "jighost/text/Numbers.h"

#include <algorithm>
#include <array>
#include <cmath>

std::optional<double> ParseDouble(std::string_view text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return number;
}

std::optional<double> ParseQuantity(std::string_view text) {
    if (const auto whole = ParseNumber<std::int64_t>(text)) {
        return static_cast<double>(*whole);
    }
    const auto number = ParseDouble(text);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::string NumberText(double number) {
    const bool bPlain = std::abs(number) < 1e15 && (number == 0 || std::abs(number) >= 1e-5);
    std::array<char, 32> text{};
    const auto [end, error] =
        bPlain ? std::to_chars(text.begin(), text.end(), number, std::chars_format::fixed)
               : std::to_chars(text.begin(), text.end(), number);
    return {text.data(), end};
}

std::string HexText(std::uint32_t value, std::size_t digits) {
    std::array<char, 8> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value, 16);
    const std::string shortest(text.data(), end);
    return std::string(digits - std::min(digits, shortest.size()), '0') + shortest;
}
