// Numbers as digits.
#include "jighost/text/Numbers.h"

#include <algorithm>
#include <array>

std::string HexText(std::uint32_t value, std::size_t digits) {
    std::array<char, 8> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value, 16);
    const std::string shortest(text.data(), end);
    return std::string(digits - std::min(digits, shortest.size()), '0') + shortest;
}
