// Lines parsed by the library simdjson, which is made for gigabytes of them.
#include "trace/EntryReader.h"

#include <simdjson.h>

#include <algorithm>
#include <charconv>

#include "trace/Base64.h"
#include "trace/Hex.h"
#include "trace/JsonLine.h"
#include "trace/LineReader.h"

using simdjson::ondemand::object;
using simdjson::ondemand::value;

// As FIELD_ID has them.
static constexpr std::string_view NAMES[] = {
    "entry",   "operation",   "call",      "function",
    "name",    "id",          "value",     "from_list",
    "sent",    "received",    "size_left", "result",
    "record",  "failure",     "kind",      "code",
    "message", "time_ms",     "thread",    "at",
    "line",    "interleaved", "entries",   "why",
    "format",  "content",     "started",   "machine",
    "process", "program",     "continues", "operations_before",
};
static const std::size_t FIELDS = std::size(NAMES);
static_assert(FIELDS == static_cast<std::size_t>(FIELD_ID::COUNT));

struct EntryReader::PARSER {
    explicit PARSER(const std::string& path) : lines(path, simdjson::SIMDJSON_PADDING) {}

    LineReader lines;
    simdjson::ondemand::parser entries;
    simdjson::dom::parser texts;  // with escapes in them
};

EntryReader::EntryReader(const std::string& path)
    : m_Path(path), m_pParser(std::make_unique<PARSER>(path)) {}

EntryReader::~EntryReader() = default;

bool EntryReader::Next() {
    const LineReader::FOUND found = m_pParser->lines.Next();
    if (found == LineReader::FOUND::END) {
        return false;
    }
    ++m_Line;
    m_Tokens = {};
    if (found == LineReader::FOUND::TOO_LONG) {
        Refuse("expected at most " + std::to_string(LONGEST_LINE) + " bytes in a line");
    }
    Parse(m_pParser->lines.Text());
    return true;
}

std::size_t EntryReader::Size() const {
    return m_pParser->lines.Text().size();
}

// --- A line's fields ---

/// The place of a name, looked for from the one on that writers tell next; FIELDS for no name.
static std::size_t FindName(std::string_view name, std::size_t next) {
    for (std::size_t i = 0; i < FIELDS; ++i, ++next) {
        next = next < FIELDS ? next : 0;
        if (NAMES[next] == name) {
            return next;
        }
    }
    return FIELDS;
}

/// The name that begins at a place of a line, whose quote it has to have.
static std::string_view NameAt(const char* pName) {
    const char* pEnd = pName;
    while (*pEnd != '"') {
        ++pEnd;
    }
    return {pName, pEnd};
}

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
template <class Tokens>
static void TakeFields(object fields, Tokens& tokens, std::size_t next) {
    static const auto FAILURE = static_cast<std::size_t>(FIELD_ID::FAILURE);
    const bool bWithin = next > FAILURE;
    for (auto each : fields) {
        const std::size_t place = FindName(NameAt(each.key().value().raw()), next);
        if (place == FIELDS) {
            continue;
        }
        value field = each.value();
        next = place + 1;
        if (place == FAILURE && !bWithin && field.raw_json_token().starts_with('{')) {
            tokens[place] = "{}";
            TakeFields(field.get_object(), tokens, next);
        } else {
            tokens[place] = TokenOf(field);
        }
    }
}

void EntryReader::Parse(std::string_view line) {
    static const char EXPECTED[] = "expected a JSON object";
    try {
        auto document =
            m_pParser->entries.iterate(line.data(), line.size(), m_pParser->lines.Room());
        TakeFields(document.get_object(), m_Tokens, 0);
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
        Refuse("expected \"" + std::string(NAMES[static_cast<std::size_t>(field)]) + '"');
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

double EntryReader::FractionAt(FIELD_ID field) const {
    const std::string_view token = Required(field);
    double number = 0;
    const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), number);
    if (error != std::errc() || end != token.data() + token.size()) {
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
    if (quoted && quoted->find_first_of("\\\"") == std::string_view::npos) {
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
        std::string(NAMES[static_cast<std::size_t>(field)]) + ": expected " + expected + ", got " +
        std::string(token.substr(0, longest)) + (token.size() > longest ? "..." : ""));
}
