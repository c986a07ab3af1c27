// What begins markup stands as an entity, behind what PlainText has made visible.
#include "jighost/report/Markup.h"

#include "jighost/text/PlainText.h"

// U+FFFE and U+FFFF, which are no characters of XML.
static constexpr std::string_view NO_CHARACTERS = "\xEF\xBF\xBE\xEF\xBF\xBF";

static std::string_view EntityOf(char character) {
    switch (character) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        case '\'':
            return "&#39;";
        default:
            return "";
    }
}

std::string MarkupText(std::string_view text) {
    std::string markup;
    for (const char character : PlainText(text, NO_CHARACTERS)) {
        const std::string_view entity = EntityOf(character);
        entity.empty() ? markup.push_back(character) : void(markup.append(entity));
    }
    return markup;
}
