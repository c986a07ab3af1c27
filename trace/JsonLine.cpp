// Escapes of JSON, and UTF-8 checked on the way.
#include "trace/JsonLine.h"

#include <charconv>

// In place of bytes that are no UTF-8: a reader would refuse the whole line.
static const char REPLACEMENT[] = "\xEF\xBF\xBD";

/// The length of the UTF-8 character that the text begins with; 0 if it begins with none.
static std::size_t CharacterLength(std::string_view text) {
    const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
    const unsigned lead = byteAt(0);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xC2 ? 0
                               : lead < 0xE0 ? 2
                               : lead < 0xF0 ? 3
                               : lead < 0xF5 ? 4
                                             : 0;
    if (length == 0 || length > text.size()) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(i) & 0xC0U) != 0x80) {
            return 0;
        }
    }
    // Overlong forms, surrogates, and what lies above the last character.
    const unsigned second = length > 2 ? byteAt(1) : 0x80;
    const bool bOutside = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) ||
                          (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second > 0x8F);
    return bOutside ? 0 : length;
}

static void AppendEscaped(std::string& out, char character) {
    static const char digits[] = "0123456789abcdef";
    const auto code = static_cast<unsigned char>(character);
    if (character == '"' || character == '\\') {
        out += '\\';
        out += character;
    } else if (code < 0x20) {
        out += "\\u00";
        out += digits[code >> 4U];
        out += digits[code & 0xFU];
    } else {
        out += character;
    }
}

static std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        if (length == 1) {
            AppendEscaped(quoted, text.front());
        } else {
            quoted += length == 0 ? std::string_view(REPLACEMENT) : text.substr(0, length);
        }
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return quoted + '"';
}

void JsonLine::Add(const char* pszKey, std::string_view text) {
    AddRaw(pszKey, Quoted(text));
}

void JsonLine::Add(const char* pszKey, std::int64_t number) {
    AddRaw(pszKey, std::to_string(number));
}

void JsonLine::Add(const char* pszKey, double number) {
    char szNumber[32];  // the shortest form that reads back the same has at most 24 characters
    const auto [pEnd, error] = std::to_chars(szNumber, szNumber + sizeof(szNumber), number);
    AddRaw(pszKey, {szNumber, pEnd});
}

void JsonLine::Add(const char* pszKey, bool flag) {
    AddRaw(pszKey, flag ? "true" : "false");
}

void JsonLine::AddObject(const char* pszKey, const JsonLine& fields) {
    AddRaw(pszKey, '{' + fields.m_Fields + '}');
}

void JsonLine::AddRaw(const char* pszKey, std::string_view value) {
    m_Fields += m_Fields.empty() ? "" : ",";
    m_Fields.append("\"").append(pszKey).append("\":").append(value);
}
