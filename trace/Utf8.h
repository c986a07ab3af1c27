// Characters of a text that may be no UTF-8.
#pragma once

#include <cstdint>
#include <string_view>

struct UTF8_CHARACTER {
    char32_t code = 0;
    std::size_t length = 0;  ///< in bytes; 0 if the text begins with no character
};

/// Whether the text is printable ASCII alone.
bool IsPrintable(std::string_view text);

/// The character that a text, which is not empty, begins with.
UTF8_CHARACTER FirstCharacter(std::string_view text);
