// The tags, the names behind them, and the results.
#include "jighost/log/LogLine.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>

#include "frame/Result.h"

/// Closing lines with another name than the opening line, and those with the tag of a value.
static const std::string_view ODD_CLOSING = "SaveDateDisplayFormatt";
static const std::string_view ODD_CLOSING_OPERATION = "SaveDateDisplayFormat";
static const std::string_view VALUE_CLOSINGS[] = {"SetSoundVolume", "_OutputColorBarChart"};

bool LOG_LINE::HasFailure() const {
    return kind == LINE_KIND::CLOSING && result && IsFailure(*result);
}

// By the first letter, since every line of a log comes by here.
static bool IsTag(std::string_view text) {
    if (text.size() < TAG_SIZE || text[TAG_SIZE - 1] != ']') {
        return false;
    }
    const std::string_view word = text.substr(1, TAG_SIZE - 2);
    switch (word[0]) {
        case 'F':
            return word == "FUNC";
        case 'V':
            return word == "VALU";
        case 'E':
            return word == "ERR!" || word == "EVNT";
        default:
            return word == "----" || word == "CMNT" || word == "STDF" || word == "WAPI";
    }
}

std::size_t FindTag(std::string_view line, std::size_t from) {
    std::size_t position = from;
    if (position >= line.size() || line[position] != '[') {
        position = line.find('[', position);
    }
    while (position != std::string_view::npos && !IsTag(line.substr(position))) {
        position = line.find('[', position + 1);
    }
    return position;
}

/// For each character, by its code, whether a name may have it.
static constexpr auto OF_NAME = [] {
    std::array<bool, 256> ofName{};
    for (const char c : "0123456789_ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz") {
        ofName[static_cast<unsigned char>(c)] = c != '\0';
    }
    return ofName;
}();

static bool IsName(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return OF_NAME[static_cast<unsigned char>(c)];
    });
}

/// Decimal, or hexadecimal if there is no other way to read it; nothing for other text.
static std::optional<std::int32_t> ParseLoggedResult(std::string_view text) {
    if (text == "0") {
        return 0;
    }
    const char* pEnd = text.data() + text.size();
    std::int32_t decimal = 0;
    const auto [pDecimalEnd, error] = std::from_chars(text.data(), pEnd, decimal);
    if (error == std::errc() && pDecimalEnd == pEnd) {
        return decimal;
    }
    std::uint32_t bits = 0;
    const auto [pHexEnd, hexError] = std::from_chars(text.data(), pEnd, bits, 16);
    if (hexError == std::errc() && pHexEnd == pEnd) {
        return static_cast<std::int32_t>(bits);
    }
    return std::nullopt;
}

static bool IsValueClosing(std::string_view text) {
    return std::any_of(
        std::begin(VALUE_CLOSINGS), std::end(VALUE_CLOSINGS), [&](std::string_view name) {
            return text.starts_with(name) && text.substr(name.size()).starts_with(" - ");
        });
}

// The name of a closing line is held against those of opening lines, and may be anything here.
static void ParseFunctionLine(LOG_LINE& line, std::string_view text) {
    const std::size_t end = text.find(' ');
    line.name = text.substr(0, end);
    if (end == std::string_view::npos) {
        line.kind = IsName(line.name) ? LINE_KIND::OPENING : LINE_KIND::OTHER;
    } else if (text.substr(end).starts_with(" - ")) {
        line.kind = LINE_KIND::CLOSING;
        line.result = ParseLoggedResult(text.substr(end + 3));
        if (line.name == ODD_CLOSING) {
            line.name = ODD_CLOSING_OPERATION;
        }
    }
}

static LINE_KIND KindOfOther(std::string_view tagged) {
    if (tagged == "[----]") {
        return LINE_KIND::SEPARATOR;
    }
    return tagged.starts_with("[CMNT]  ") && tagged.ends_with(" Initialize") ? LINE_KIND::START
                                                                             : LINE_KIND::OTHER;
}

LOG_LINE ParseLogLine(std::string_view line, std::size_t tag) {
    LOG_LINE parsed;
    parsed.prefix = line.substr(0, tag);
    const std::string_view tagged = line.substr(tag);
    const std::string_view text = tagged.substr(TAG_SIZE);
    switch (tagged[1]) {  // first of all, since every line of a log comes by here
        case 'F':
        case 'V':
            if (text.starts_with(' ') && (tagged[1] == 'F' || IsValueClosing(text.substr(1)))) {
                ParseFunctionLine(parsed, text.substr(1));
            }
            break;
        case 'E':
            if (tagged.starts_with("[ERR!]")) {
                parsed.kind = LINE_KIND::ERROR_LINE;
                parsed.text = text.substr(std::min(text.find_first_not_of(" -"), text.size()));
            }
            break;
        default:
            parsed.kind = KindOfOther(tagged);
    }
    return parsed;
}
