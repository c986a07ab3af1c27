// Escapes of JSON.
#include "trace/JsonLine.h"

#include <charconv>

#include "trace/Utf8.h"

// In place of bytes that are no UTF-8: a reader would refuse the whole line.
static const char REPLACEMENT[] = "\xEF\xBF\xBD";

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
        const std::size_t length = FirstCharacter(text).length;
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
