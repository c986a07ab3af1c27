// Escapes of JSON.
#include "trace/JsonLine.h"

#include <algorithm>
#include <charconv>
#include <cstring>

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
    } else if (character == '\n') {
        out += "\\n";
    } else if (code < 0x20) {
        out += "\\u00";
        out += digits[code >> 4U];
        out += digits[code & 0xFU];
    } else {
        out += character;
    }
}

static bool IsPlain(char character) {
    return character >= ' ' && character <= '~' && character != '"' && character != '\\';
}

/// Whether eight characters stand for themselves. A sum or a difference of bytes sets its highest
/// bit where one does not, or behind such a one.
static bool AreAllPlain(const char* pText) {
    static const std::uint64_t EACH = 0x0101010101010101;
    static const std::uint64_t HIGHEST = EACH << 7U;
    std::uint64_t text = 0;
    std::memcpy(&text, pText, sizeof(text));
    const std::uint64_t quotes = text ^ (EACH * '"');
    const std::uint64_t slashes = text ^ (EACH * '\\');
    return ((text | (text + EACH) | (text - EACH * ' ') | (quotes - EACH) | (slashes - EACH)) &
            HIGHEST) == 0;
}

/// What stands for itself in JSON, from the text's start on.
static std::size_t PlainLength(std::string_view text) {
    std::size_t length = 0;
    while (length + sizeof(std::uint64_t) <= text.size() && AreAllPlain(text.data() + length)) {
        length += sizeof(std::uint64_t);
    }
    while (length < text.size() && IsPlain(text[length])) {
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

// --- Values ---

// One step for name and value, and none that clears their place first.
template <class PutValue>
void JsonLine::Add(const JsonKey& key, std::size_t most, const PutValue& putValue) {
    const std::size_t start = m_Text.size();
    const bool bFirst = m_Text.back() == '{';
    m_Text.resize_and_overwrite(
        start + JsonKey::ROOM + most, [&](char* pText, std::size_t /*size*/) {
            return static_cast<std::size_t>(putValue(key.Put(pText + start, bFirst)) - pText);
        });
}

void JsonLine::AddKey(const JsonKey& key) {
    Add(key, 0, [](char* pOut) { return pOut; });
}

static char* Put(char* pOut, std::string_view text) {
    return std::copy(text.begin(), text.end(), pOut);
}

static const std::size_t LONGEST_NUMBER = 20;  // of 64 bits

static char* Put(char* pOut, std::int64_t number) {
    return std::to_chars(pOut, pOut + LONGEST_NUMBER, number).ptr;
}

void JsonLine::Add(const JsonKey& key, std::string_view text) {
    if (PlainLength(text) != text.size()) {
        AddKey(key);
        AppendQuoted(m_Text, text);
        return;
    }
    Add(key, text.size() + 2, [&](char* pOut) {
        *pOut = '"';
        pOut = Put(pOut + 1, text);
        *pOut = '"';
        return pOut + 1;
    });
}

void JsonLine::Add(const JsonKey& key, std::int64_t number) {
    Add(key, LONGEST_NUMBER, [number](char* pOut) { return Put(pOut, number); });
}

void JsonLine::Add(const JsonKey& key, std::chrono::nanoseconds time) {
    const std::int64_t million = 1'000'000;
    Add(key, 2 * LONGEST_NUMBER, [&](char* pOut) {
        char* pPoint = Put(pOut, time.count() / million);
        pOut = Put(pPoint, million + time.count() % million);
        *pPoint = '.';  // in place of the million's digit, which keeps the zeros
        return pOut;
    });
}

void JsonLine::Add(const JsonKey& key, bool flag) {
    const std::string_view text = flag ? "true" : "false";
    Add(key, text.size(), [text](char* pOut) { return Put(pOut, text); });
}

void JsonLine::AddNull(const JsonKey& key) {
    const std::string_view text = "null";
    Add(key, text.size(), [text](char* pOut) { return Put(pOut, text); });
}

void JsonLine::AddBytes(const JsonKey& key, std::span<const std::uint8_t> bytes) {
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

void JsonLine::BeginObject(const JsonKey& key) {
    AddKey(key);
    m_Text += '{';
}
