// Escapes of JSON.
#include "trace/JsonLine.h"

#include <algorithm>
#include <charconv>

#include "trace/Base64.h"
#include "trace/Hex.h"
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

/// What stands for itself in JSON, from the text's start on.
static std::size_t PlainLength(std::string_view text) {
    std::size_t length = 0;
    while (length < text.size() && text[length] >= ' ' && text[length] <= '~' &&
           text[length] != '"' && text[length] != '\\') {
        ++length;
    }
    return length;
}

/// Appends the character that the text begins with, and gives its length.
static std::size_t AppendFirst(std::string& out, std::string_view text) {
    const std::size_t length = FirstCharacter(text).length;
    if (length == 1) {
        AppendEscaped(out, text.front());
    } else {
        out += length == 0 ? std::string_view(REPLACEMENT) : text.substr(0, length);
    }
    return std::max<std::size_t>(length, 1);
}

static void AppendQuoted(std::string& out, std::string_view text) {
    out += '"';
    while (!text.empty()) {
        const std::size_t plain = PlainLength(text);
        out += text.substr(0, plain);
        text.remove_prefix(plain);
        if (!text.empty()) {
            text.remove_prefix(AppendFirst(out, text));
        }
    }
    out += '"';
}

static void AppendNumber(std::string& out, std::int64_t number) {
    char szNumber[32];  // one of 64 bits has at most 20 characters
    const auto [pEnd, error] = std::to_chars(szNumber, szNumber + sizeof(szNumber), number);
    out.append(szNumber, pEnd);
}

void JsonLine::Add(std::string_view key, std::string_view text) {
    AddKey(key);
    AppendQuoted(m_Text, text);
}

void JsonLine::Add(std::string_view key, std::int64_t number) {
    AddKey(key);
    AppendNumber(m_Text, number);
}

void JsonLine::Add(std::string_view key, std::chrono::nanoseconds time) {
    const std::int64_t million = 1'000'000;
    AddKey(key);
    AppendNumber(m_Text, time.count() / million);
    const std::size_t point = m_Text.size();
    AppendNumber(m_Text, million + time.count() % million);
    m_Text[point] = '.';  // in place of the million's digit, which keeps the zeros
}

void JsonLine::Add(std::string_view key, bool flag) {
    AddKey(key);
    m_Text += flag ? "true" : "false";
}

void JsonLine::AddNull(std::string_view key) {
    AddKey(key);
    m_Text += "null";
}

void JsonLine::AddBytes(std::string_view key, std::span<const std::uint8_t> bytes) {
    AddKey(key);
    m_Text += '"';
    if (bytes.size() > HEX_LIMIT) {
        m_Text += BASE64;
        AppendBase64(m_Text, bytes);
    } else {
        AppendHex(m_Text, bytes);
    }
    m_Text += '"';
}

void JsonLine::BeginObject(std::string_view key) {
    AddKey(key);
    m_Text += '{';
}

void JsonLine::AddKey(std::string_view key) {
    const bool bFirst = m_Text.back() == '{';
    const std::size_t start = m_Text.size();
    const std::size_t size = start + key.size() + (bFirst ? 3 : 4);
    // One step in place of four, and none that clears it first: a line consists of keys mostly.
    m_Text.resize_and_overwrite(size, [&](char* pText, std::size_t /*size*/) {
        char* pOut = pText + start;
        if (!bFirst) {
            *pOut++ = ',';
        }
        *pOut++ = '"';
        pOut = std::copy_n(key.data(), key.size(), pOut);
        *pOut++ = '"';
        *pOut = ':';
        return size;
    });
}
