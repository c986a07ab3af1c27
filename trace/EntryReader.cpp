// Fields in the plain form that writers give nearly all of them are taken as they stand; a line
// with another one is parsed by the library simdjson, which is made for gigabytes.
#include "trace/EntryReader.h"

#include <simdjson.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

#include "trace/Base64.h"
#include "trace/Hex.h"
#include "trace/JsonLine.h"
#include "trace/Utf8.h"

using simdjson::ondemand::value;

struct EntryReader::PARSER {
    simdjson::ondemand::parser entries;
    simdjson::dom::parser texts;  // with escapes in them
};

EntryReader::EntryReader(const std::string& path)
    : m_Path(path),
      m_Lines(path, simdjson::SIMDJSON_PADDING),
      m_pParser(std::make_unique<PARSER>()) {}

EntryReader::~EntryReader() = default;

bool EntryReader::Next() {
    const LineReader::FOUND found = m_Lines.Next();
    if (found == LineReader::FOUND::END) {
        return false;
    }
    ++m_Line;
    m_Taken.reset();
    m_Last = FIELD_COUNT;
    if (found == LineReader::FOUND::TOO_LONG) {
        Refuse("expected at most " + std::to_string(LONGEST_LINE) + " bytes in a line");
    }
    const std::string_view line = m_Lines.Text();
    m_pNext = line.data() + 1;
    m_pEnd = line.data() + line.size();
    if (!line.starts_with('{') || !line.ends_with('}')) {
        Parse();
    }
    return true;
}

// --- A line's fields ---

std::string_view EntryReader::Search(std::size_t wanted) const {
    while (m_pNext != m_pEnd && !m_Taken[wanted]) {
        if (!TakePlainField()) {
            Parse();
        }
    }
    return m_Taken[wanted] ? m_Tokens[wanted] : std::string_view();
}

namespace {

/// What a name begins with, its quote included if it is short: compared at once.
struct NAME_START {
    using Bytes = std::array<char, sizeof(std::uint64_t)>;

    constexpr explicit NAME_START(std::string_view name) {
        Bytes start{};
        Bytes counting{};
        for (std::size_t i = 0; i < start.size() && i <= name.size(); ++i) {
            start[i] = i < name.size() ? name[i] : '"';
            counting[i] = static_cast<char>(0xFF);
        }
        bytes = std::bit_cast<std::uint64_t>(start);
        mask = std::bit_cast<std::uint64_t>(counting);
    }

    std::uint64_t bytes = 0;
    std::uint64_t mask = 0;
};

constexpr auto STARTS = []<std::size_t... Places>(std::index_sequence<Places...> /*places*/) {
    return std::array{NAME_START(FieldName(Places))...};
}
(std::make_index_sequence<FIELD_COUNT>());

/// Of a long name.
bool HasRest(const char* pName, std::string_view name) {
    return name.size() < sizeof(NAME_START::Bytes) ||
           (std::string_view(pName, name.size()) == name && pName[name.size()] == '"');
}

}  // namespace

std::size_t EntryReader::FindName(const char* pName) const {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, pName, sizeof(bytes));
    std::size_t& follower = m_Followers[m_Last];
    for (std::size_t i = 0, place = follower; i < FIELD_COUNT; ++i, ++place) {
        place = place < FIELD_COUNT ? place : 0;
        if ((bytes & STARTS[place].mask) == STARTS[place].bytes &&
            HasRest(pName, FieldName(place))) {
            follower = place;
            return place;
        }
    }
    return FIELD_COUNT;
}

// --- Plain fields ---

/// Digits, small letters and signs.
static constexpr auto OF_WORD = [] {
    std::array<bool, 256> ofWord{};
    for (const char character : std::string_view("-+.0123456789aeflnrstu")) {
        ofWord[static_cast<unsigned char>(character)] = true;
    }
    return ofWord;
}();

/// Where the next quote stands; the line's end if there is none.
static const char* FindQuote(const char* pText, const char* pLineEnd) {
    const std::string_view rest(std::min(pText, pLineEnd), pLineEnd);
    return rest.data() + std::min(rest.find('"'), rest.size());
}

/// The same, perhaps behind the line's end: most texts are short, and a call would cost more.
static const char* FindNearQuote(const char* pText, const char* pLineEnd) {
    static const std::uint64_t LOW_BITS = 0x0101010101010101;
    const char* pFar = pText + 2 * sizeof(std::uint64_t);
    for (; pText != pFar; pText += sizeof(std::uint64_t)) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, pText, sizeof(bytes));
        const std::uint64_t others = bytes ^ (LOW_BITS * '"');
        const std::uint64_t quotes = (others - LOW_BITS) & ~others & (LOW_BITS << 7U);
        if (quotes != 0) {
            return pText + std::countr_zero(quotes) / 8;
        }
    }
    return FindQuote(pText, pLineEnd);
}

/// Behind the number, word or text that stands at a place; the place itself for others, and for a
/// text whose end only a parser finds.
static const char* PlainEnd(const char* pValue, const char* pLineEnd) {
    if (*pValue == '"') {
        const char* pQuote = FindNearQuote(pValue + 1, pLineEnd);
        return pQuote < pLineEnd && pQuote[-1] != '\\' ? pQuote + 1 : pValue;
    }
    const char* pEnd = pValue;
    while (OF_WORD[static_cast<unsigned char>(*pEnd)]) {
        ++pEnd;
    }
    return pEnd;
}

bool EntryReader::TakePlainField() const {
    if (*m_pNext != '"') {
        return false;
    }
    const std::size_t place = FindName(m_pNext + 1);
    const char* pNameEnd = place < FIELD_COUNT ? m_pNext + 1 + FieldName(place).size()
                                               : std::find(m_pNext + 1, m_pEnd, '"');
    return m_pEnd - pNameEnd >= 3 && pNameEnd[1] == ':' && TakeValue(place, pNameEnd + 2);
}

bool EntryReader::TakeValue(std::size_t place, const char* pValue) const {
    const char* pEnd = PlainEnd(pValue, m_pEnd);
    if (pEnd == pValue || !IsValueEnd(pEnd)) {
        return false;
    }
    TakeNext(place, {pValue, pEnd});
    return true;
}

// --- Fields of any form ---

/// Lists and objects whole; of others the parser knows no end but that of the blanks behind them.
static std::string_view TokenOf(value& value) {
    std::string_view token = value.raw_json_token();
    if (token.starts_with('[')) {
        token = value.get_array().value().raw_json().value();
    } else if (token.starts_with('{')) {
        token = value.get_object().value().raw_json().value();
    }
    return token.substr(0, token.find_last_not_of(" \t\r") + 1);
}

/// A failure's own fields come beside it, not those of an object within it.
template <class Object>
void EntryReader::TakeFields(Object& fields, bool bWithin) const {
    static const auto FAILURE = static_cast<std::size_t>(FIELD_ID::FAILURE);
    for (auto each : fields) {
        const std::size_t place = FindName(each.key().value().raw());
        value field = each.value();
        if (place == FAILURE && !bWithin && field.raw_json_token().starts_with('{')) {
            Take(place, "{}");
            auto within = field.get_object().value();
            TakeFields(within, true);
        } else {
            Take(place, TokenOf(field));
        }
    }
}

/// The whole line, for what was not taken of it yet.
void EntryReader::Parse() const {
    static const char EXPECTED[] = "expected a JSON object";
    const std::string_view line = m_Lines.Text();
    try {
        auto document = m_pParser->entries.iterate(line.data(), line.size(), m_Lines.Room());
        auto fields = document.get_object().value();
        TakeFields(fields, false);
        m_pNext = m_pEnd;
        if (document.current_location().error() != simdjson::OUT_OF_BOUNDS) {
            Refuse(EXPECTED);
        }
    } catch (const simdjson::simdjson_error&) {
        Refuse(EXPECTED);
    }
}

// --- Values ---

std::string_view EntryReader::Required(FIELD_ID field) const {
    const std::string_view token = Token(field);
    if (token.empty()) {
        Refuse("expected \"" + std::string(FieldName(static_cast<std::size_t>(field))) + '"');
    }
    return token;
}

std::int64_t EntryReader::WholeNumber(FIELD_ID field, const BOUNDS& bounds) const {
    const std::string_view token = Required(field);
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), number);
    if (error != std::errc() || end != token.data() + token.size() || number < bounds.lowest ||
        number > bounds.highest) {
        RefuseValue(
            field, "a number from " + std::to_string(bounds.lowest) + " to " +
                       std::to_string(bounds.highest));
    }
    return number;
}

/// Digits with a point among them, as few as writers put: the quotient of two numbers that are
/// exact is as near as can be.
static std::optional<double> ParseDigits(std::string_view token) {
    static const std::size_t MOST = std::numeric_limits<double>::digits10;
    std::uint64_t digits = 0;
    std::uint64_t scale = 0;  // none ahead of the point
    for (const char character : token.substr(0, MOST)) {
        if (character >= '0' && character <= '9') {
            digits = 10 * digits + static_cast<std::uint64_t>(character - '0');
            scale *= 10;
        } else if (character == '.' && scale == 0) {
            scale = 1;
        } else {
            return std::nullopt;
        }
    }
    const bool bWhole = token.size() <= MOST && token.front() != '.';
    return bWhole && scale != 0
               ? std::optional(static_cast<double>(digits) / static_cast<double>(scale))
               : std::nullopt;
}

double EntryReader::FractionAt(FIELD_ID field) const {
    const std::string_view token = Required(field);
    if (const auto digits = ParseDigits(token)) {
        return *digits;
    }
    double number = 0;
    const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), number);
    if (error != std::errc() || end != token.data() + token.size() || !std::isfinite(number)) {
        RefuseValue(field, "a number");
    }
    return number;
}

bool EntryReader::FlagAt(FIELD_ID field) const {
    const std::string_view token = Required(field);
    if (token != "true" && token != "false") {
        RefuseValue(field, "true or false");
    }
    return token == "true";
}

/// What stands between the quotes; nothing for a value that is no text.
static std::optional<std::string_view> Quoted(std::string_view token) {
    const bool bText = token.size() >= 2 && token.front() == '"' && token.back() == '"';
    return bText ? std::optional(token.substr(1, token.size() - 2)) : std::nullopt;
}

std::string EntryReader::TextAt(FIELD_ID field) const {
    const auto quoted = Quoted(Required(field));
    if (quoted && IsPrintable(*quoted) && quoted->find('\\') == std::string_view::npos) {
        return std::string(*quoted);
    }
    std::string_view text;
    if (m_pParser->texts.parse(std::string(Token(field))).get(text) != simdjson::SUCCESS) {
        RefuseValue(field, "a text");
    }
    return std::string(text);
}

Link::Bytes EntryReader::BytesAt(FIELD_ID field) const {
    const auto quoted = Quoted(Required(field));
    if (!quoted) {
        RefuseValue(field, "a text");
    }
    std::optional<Link::Bytes> bytes = quoted->starts_with(JsonLine::BASE64)
                                           ? ParseBase64(quoted->substr(JsonLine::BASE64.size()))
                                           : ParseHex(*quoted);
    if (!bytes) {
        RefuseValue(
            field, "bytes as hexadecimal digits, two for each, or as base64 behind \"base64:\"");
    }
    return std::move(*bytes);
}

void EntryReader::Refuse(const std::string& text) const {
    throw TraceError(m_Path + ':' + std::to_string(m_Line) + ": " + text);
}

void EntryReader::RefuseValue(FIELD_ID field, const std::string& expected) const {
    const std::size_t longest = 40;
    const std::string_view token = Token(field);
    Refuse(
        std::string(FieldName(static_cast<std::size_t>(field))) + ": expected " + expected +
        ", got " + std::string(token.substr(0, longest)) + (token.size() > longest ? "..." : ""));
}
