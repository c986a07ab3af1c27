// Which characters are harmless, and how the others are written.
#include "jighost/text/PlainText.h"

#include <algorithm>
#include <iterator>

#include "jighost/text/Numbers.h"
#include "trace/Utf8.h"

struct CODE_RANGE {
    char32_t first;
    char32_t last;
};

static constexpr CODE_RANGE HARMFUL[] = {
    {0x00, 0x1F},        // control characters
    {0x7F, 0x9F},        // more of them
    {0xAD, 0xAD},        // a hyphen that may not be seen
    {0x61C, 0x61C},      // direction of writing
    {0x180E, 0x180E},    // without width
    {0x200B, 0x200F},    // without width, direction
    {0x2028, 0x202E},    // ends of lines, direction
    {0x2060, 0x206F},    // without width, direction
    {0xFE00, 0xFE0F},    // variants of the character before
    {0xFEFF, 0xFEFF},    // byte order mark
    {0xFFF9, 0xFFFB},    // marks of annotations
    {0xE0000, 0xE0FFF},  // tags and variants, unseen
};

bool IsHarmful(char32_t code) {
    return std::any_of(std::begin(HARMFUL), std::end(HARMFUL), [code](const CODE_RANGE& range) {
        return code >= range.first && code <= range.last;
    });
}

std::string PlainText(std::string_view text, std::string_view escaped) {
    const auto isPlain = [&](char c) {  // most of what comes by here
        return c >= ' ' && c <= '~' && escaped.find(c) == std::string_view::npos;
    };
    std::string plain;
    while (!text.empty()) {
        const auto end = std::find_if_not(text.begin(), text.end(), isPlain);
        if (end != text.begin()) {
            plain.append(text.begin(), end);
            text = {end, text.end()};
            continue;
        }
        const UTF8_CHARACTER character = FirstCharacter(text);
        const std::size_t length = std::max<std::size_t>(character.length, 1);
        const std::string_view bytes = text.substr(0, length);
        if (character.length == 0 || IsHarmful(character.code) ||
            escaped.find(bytes) != std::string_view::npos) {
            for (const char byte : bytes) {
                plain.append("\\x").append(HexText(static_cast<unsigned char>(byte), 2));
            }
        } else {
            plain.append(bytes);
        }
        text.remove_prefix(length);
    }
    return plain;
}
