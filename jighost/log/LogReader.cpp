// Lines taken one by one into the operations that they belong to.
#include "jighost/log/LogReader.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include "frame/Result.h"

static const std::size_t MAX_LINE = 65536;
static const std::size_t MAX_TEXT = 500;
/// Operations in one tree. The module's deepest run has less than ten.
static const std::size_t MAX_TREE = 1000;

static const std::size_t TAG_SIZE = 6;  // "[FUNC]"

/// Closing lines with another name than the opening line, and those with the tag of a value.
static const std::string_view ODD_CLOSING = "SaveDateDisplayFormatt";
static const std::string_view ODD_CLOSING_OPERATION = "SaveDateDisplayFormat";
static const std::string_view VALUE_CLOSINGS[] = {"SetSoundVolume", "_OutputColorBarChart"};

bool LOGGED_OPERATION::HasFailed() const {
    return !result || IsFailure(*result);
}

// --- Pieces to lines ---

void LogReader::Add(std::string_view bytes) {
    while (!bytes.empty()) {
        const void* pEnd = std::memchr(bytes.data(), '\n', bytes.size());
        if (pEnd == nullptr) {
            KeepPart(bytes);
            return;
        }
        const auto length = static_cast<std::size_t>(static_cast<const char*>(pEnd) - bytes.data());
        if (m_Part.empty() && !m_bTooLong) {
            ReadLine(bytes.substr(0, length));
        } else {
            KeepPart(bytes.substr(0, length));
            ReadLine(m_Part);
            BeginFile();
        }
        bytes.remove_prefix(length + 1);
    }
}

void LogReader::KeepPart(std::string_view part) {
    if (m_bTooLong || m_Part.size() + part.size() > MAX_LINE) {
        m_Part.clear();
        m_bTooLong = true;
        return;
    }
    m_Part += part;
}

void LogReader::BeginFile() {
    m_Part.clear();
    m_bTooLong = false;
}

// --- Lines ---

static bool IsTag(std::string_view tag) {
    // The most frequent first.
    static const std::string_view TAGS[] = {"[FUNC]", "[----]", "[VALU]", "[CMNT]",
                                            "[ERR!]", "[EVNT]", "[STDF]", "[WAPI]"};
    return std::find(std::begin(TAGS), std::end(TAGS), tag) != std::end(TAGS);
}

/// Where the line's tag stands: the first one, since the prefix has none and a text may.
static std::size_t FindTag(std::string_view line) {
    std::size_t position = line.find('[');
    while (position != std::string_view::npos && !IsTag(line.substr(position, TAG_SIZE))) {
        position = line.find('[', position + 1);
    }
    return position;
}

void LogReader::ReadLine(std::string_view line) {
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    const std::size_t position = FindTag(line);
    if (position == std::string_view::npos) {
        return;
    }
    const std::string_view prefix = line.substr(0, position);
    const std::string_view tagged = line.substr(position);
    const std::string_view text = tagged.substr(TAG_SIZE);
    if (tagged.starts_with("[FUNC] ") || tagged.starts_with("[VALU] ")) {
        ReadFunctionLine(prefix, tagged);
    } else if (tagged.starts_with("[ERR!]")) {
        ReadErrorLine(text);
    } else if (tagged.starts_with("[CMNT]  ") && text.ends_with(" Initialize")) {
        End();  // the host that left them open is gone
    }
}

/// The length of the name that the text begins with.
static std::size_t NameLength(std::string_view text) {
    const auto isOfName = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '_';
    };
    return static_cast<std::size_t>(
        std::find_if_not(text.begin(), text.end(), isOfName) - text.begin());
}

void LogReader::ReadFunctionLine(std::string_view prefix, std::string_view tagged) {
    const std::string_view text = tagged.substr(TAG_SIZE + 1);
    const bool bValue = tagged[1] == 'V';
    std::string_view name = text.substr(0, NameLength(text));
    if (bValue && std::find(std::begin(VALUE_CLOSINGS), std::end(VALUE_CLOSINGS), name) ==
                      std::end(VALUE_CLOSINGS)) {
        return;
    }
    const std::string_view rest = text.substr(name.size());
    if (rest.starts_with(" - ")) {
        Close(prefix, name == ODD_CLOSING ? ODD_CLOSING_OPERATION : name, rest.substr(3));
    } else if (rest.empty() && !name.empty() && !bValue) {
        Open(prefix, name);
    }
}

// --- Operations ---

static void AppendText(std::string& target, std::string_view text) {
    const std::size_t start = target.size();
    target += text.substr(0, MAX_TEXT - std::min(MAX_TEXT, start));
    const auto isControl = [](unsigned char c) { return c < 0x20 || c == 0x7F; };
    std::replace_if(
        target.begin() + static_cast<std::ptrdiff_t>(start), target.end(), isControl, '?');
}

static void SetPrefix(std::string& target, std::string_view prefix) {
    target.clear();
    AppendText(target, prefix.substr(0, prefix.find_last_not_of(' ') + 1));
}

/// Decimal, or hexadecimal if there is no other way to read it; nothing for other text.
static std::optional<std::int32_t> ParseLoggedResult(std::string_view text) {
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

void LogReader::Open(std::string_view prefix, std::string_view name) {
    if (m_Count == MAX_TREE) {
        End();
    }
    if (m_Count == m_Tree.size()) {
        m_Tree.emplace_back();
    }
    LOGGED_OPERATION& operation = m_Tree[m_Count];
    operation.name = name.substr(0, MAX_TEXT);
    operation.depth = m_Open.size();
    SetPrefix(operation.begin, prefix);
    operation.end.clear();
    operation.error.clear();
    operation.result.reset();
    m_Error.clear();
    m_Open.push_back(m_Count++);
}

// Error lines go to the file together with the closing line behind them: they are of that
// operation, even if one within it has not closed.
void LogReader::ReadErrorLine(std::string_view text) {
    if (!m_Error.empty()) {
        AppendText(m_Error, "; ");
    }
    const std::size_t start = text.find_first_not_of(" -");
    AppendText(m_Error, start == std::string_view::npos ? "" : text.substr(start));
}

// A line that closes nothing open is a value with the tag of a function, or its opening is lost.
void LogReader::Close(std::string_view prefix, std::string_view name, std::string_view result) {
    const auto isNamed = [&](std::size_t place) { return m_Tree[place].name == name; };
    const auto found = std::find_if(m_Open.rbegin(), m_Open.rend(), isNamed);
    const std::optional<std::int32_t> value = ParseLoggedResult(result);
    if (found == m_Open.rend() || !value) {
        return;
    }
    LOGGED_OPERATION& operation = m_Tree[*found];
    operation.result = value;
    operation.error.swap(m_Error);
    m_Error.clear();
    SetPrefix(operation.end, prefix);
    m_Open.resize(static_cast<std::size_t>(m_Open.rend() - found) - 1);
    if (m_Open.empty()) {
        End();
    }
}

void LogReader::End() {
    if (!m_Open.empty()) {
        m_Tree[m_Open.back()].error.swap(m_Error);
    }
    if (m_Count > 0) {
        m_Sink({m_Tree.data(), m_Count});
    }
    m_Count = 0;
    m_Open.clear();
}
