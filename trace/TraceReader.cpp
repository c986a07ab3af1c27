// Each line checked for its entry's fields, their types and their order.
#include "trace/TraceReader.h"

#include <algorithm>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

#include "platform/TextFile.h"
#include "platform/Utf8Path.h"
#include "trace/Base64.h"
#include "trace/Hex.h"
#include "trace/JsonLine.h"
#include "trace/Trace.h"

using Json = nlohmann::json;
using Link::Bytes;
using Link::CALL;
using Link::FAILURE;

// A trace is kept whole in memory; a whole dump takes ten megabytes of it.
static const std::uint64_t LARGEST_FILE = 256'000'000;

// The parser takes twenty times as much memory. A log line of two megabytes may need six bytes for
// each of its own.
static const std::size_t LONGEST_LINE = 16'000'000;

static const int DEEPEST_FIELD = 2;  // an entry's failure has fields of its own

static std::string ReadText(const std::string& path) {
    try {
        return ReadTextFile(PathOf(path), LARGEST_FILE);
    } catch (const std::runtime_error& e) {
        throw TraceError(e.what());
    }
}

namespace {

/// What is wrong with a line, without its place.
class LineError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

const Json& Value(const Json& entry, const char* pszKey) {
    const auto found = entry.find(pszKey);
    if (found == entry.end()) {
        throw LineError(std::string("expected \"") + pszKey + "\"");
    }
    return *found;
}

[[noreturn]] void RefuseValue(const Json& value, const char* pszKey, const std::string& expected) {
    const std::size_t longest = 40;
    std::string text = value.dump(-1, ' ', false, Json::error_handler_t::replace);
    if (text.size() > longest) {
        text = text.substr(0, longest) + "...";
    }
    throw LineError(std::string(pszKey) + ": expected " + expected + ", got " + text);
}

template <class Number>
Number NumberOf(const Json& value, const char* pszKey) {
    using Limits = std::numeric_limits<Number>;
    const bool bFits =
        value.is_number_unsigned()
            ? std::in_range<Number>(value.get<std::uint64_t>())
            : value.is_number_integer() && std::in_range<Number>(value.get<std::int64_t>());
    if (!bFits) {
        RefuseValue(
            value, pszKey,
            "a number from " + std::to_string(Limits::min()) + " to " +
                std::to_string(Limits::max()));
    }
    return value.get<Number>();
}

template <class Number>
Number NumberAt(const Json& entry, const char* pszKey) {
    return NumberOf<Number>(Value(entry, pszKey), pszKey);
}

template <class Number>
std::optional<Number> OptionalNumberAt(const Json& entry, const char* pszKey) {
    const Json& value = Value(entry, pszKey);
    return value.is_null() ? std::nullopt : std::optional(NumberOf<Number>(value, pszKey));
}

std::string TextAt(const Json& entry, const char* pszKey) {
    const Json& value = Value(entry, pszKey);
    if (!value.is_string()) {
        RefuseValue(value, pszKey, "a text");
    }
    return value.get<std::string>();
}

Bytes BytesAt(const Json& entry, const char* pszKey) {
    const std::string text = TextAt(entry, pszKey);
    const std::optional<Bytes> bytes =
        text.starts_with(JsonLine::BASE64)
            ? ParseBase64(std::string_view(text).substr(JsonLine::BASE64.size()))
            : ParseHex(text);
    if (!bytes) {
        RefuseValue(
            entry.at(pszKey), pszKey,
            "bytes as hexadecimal digits, two for each, or as base64 behind \"base64:\"");
    }
    return *bytes;
}

bool FlagAt(const Json& entry, const char* pszKey) {
    const Json& value = Value(entry, pszKey);
    if (!value.is_boolean()) {
        RefuseValue(value, pszKey, "true or false");
    }
    return value.get<bool>();
}

std::optional<FAILURE> FailureAt(const Json& entry) {
    const Json& value = Value(entry, "failure");
    if (value.is_null()) {
        return std::nullopt;
    }
    const std::string kind = TextAt(value, "kind");
    const auto* pNamed = std::find_if(
        std::begin(TRACED_FAULTS), std::end(TRACED_FAULTS),
        [&](const TRACED_FAULT& named) { return named.name == kind; });
    if (pNamed == std::end(TRACED_FAULTS)) {
        RefuseValue(value, "failure", "a known kind");
    }
    FAILURE failure;
    failure.kind = pNamed->kind;
    failure.code = NumberAt<std::int32_t>(value, "code");
    failure.message = TextAt(value, "message");
    return failure;
}

/// Takes a trace line by line; throws LineError.
class TraceReader {
  public:
    /// `number` is the line's in the file, from 1.
    void Take(const std::string& line, std::size_t number);

    bool IsEmpty() const { return !m_bStarted; }
    std::vector<TRACED_OPERATION> operations;

  private:
    void TakeStart(const Json& json);
    void TakeOperation(const Json& entry, std::size_t number);
    void TakeCall(const Json& entry);
    void TakeAnswer(const Json& entry);
    void TakeResult(const Json& entry);
    [[noreturn]] void TakeGap(const Json& entry);

    TRACED_OPERATION* Running(const Json& entry, bool bUnanswered);

    bool m_bStarted = false;
    std::uint32_t m_Before = 0;                      // operations that began in another file
    std::map<std::uint32_t, std::size_t> m_Running;  // number to place in `operations`
};

/// A JSON object. What lies deeper in it than an entry's own fields would only cost time and stack.
static Json ParseLine(const std::string& line) {
    if (line.size() > LONGEST_LINE) {
        throw LineError("expected at most " + std::to_string(LONGEST_LINE) + " bytes in a line");
    }
    const auto checkDepth = [](int depth, Json::parse_event_t, const Json&) {
        if (depth > DEEPEST_FIELD) {
            throw LineError("expected a JSON object with fields of plain values");
        }
        return true;
    };
    Json json = Json::parse(line, checkDepth, false);
    if (!json.is_object()) {
        throw LineError("expected a JSON object");
    }
    return json;
}

void TraceReader::Take(const std::string& line, std::size_t number) {
    const Json json = ParseLine(line);
    if (!m_bStarted) {
        TakeStart(json);
        return;
    }
    const std::string entry = TextAt(json, "entry");
    if (entry == "operation") {
        TakeOperation(json, number);
    } else if (entry == "call") {
        TakeCall(json);
    } else if (entry == "answer") {
        TakeAnswer(json);
    } else if (entry == "result") {
        TakeResult(json);
    } else if (entry == "gap") {
        TakeGap(json);
    } else if (entry != "log") {
        RefuseValue(
            json.at("entry"), "entry",
            "\"operation\", \"call\", \"answer\", \"result\", \"log\" or \"gap\"");
    }
}

void TraceReader::TakeStart(const Json& json) {
    const auto format = NumberAt<std::uint32_t>(json, "format");
    if (TextAt(json, "content") != TRACE_CONTENT || format == 0 || format > TRACE_FORMAT) {
        throw LineError(
            std::string("expected a ") + TRACE_CONTENT + " of format 1 to " +
            std::to_string(TRACE_FORMAT));
    }
    if (json.contains("operations_before")) {
        m_Before = NumberAt<std::uint32_t>(json, "operations_before");
    }
    m_bStarted = true;
}

void TraceReader::TakeOperation(const Json& entry, std::size_t number) {
    TRACED_OPERATION operation;
    operation.name = TextAt(entry, "name");
    operation.line = number;
    operation.bNullRecord = Value(entry, "record").is_null();
    operation.record = operation.bNullRecord ? Bytes() : BytesAt(entry, "record");
    m_Running[NumberAt<std::uint32_t>(entry, "operation")] = operations.size();
    operations.push_back(std::move(operation));
}

/// The operation that this entry belongs to; null for one that began in another file, and for calls
/// outside all operations.
TRACED_OPERATION* TraceReader::Running(const Json& entry, bool bUnanswered) {
    const auto number = NumberAt<std::uint32_t>(entry, "operation");
    const auto running = m_Running.find(number);
    if (running == m_Running.end() && number <= m_Before) {
        return nullptr;
    }
    if (running == m_Running.end() || operations[running->second].bUnanswered != bUnanswered) {
        throw LineError("there can be no " + TextAt(entry, "entry") + " here");
    }
    return &operations[running->second];
}

static void CheckCallNumber(const Json& entry, std::size_t expected) {
    if (NumberAt<std::uint32_t>(entry, "call") != expected) {
        RefuseValue(entry.at("call"), "call", std::to_string(expected));
    }
}

void TraceReader::TakeCall(const Json& entry) {
    TRACED_OPERATION* pOperation = Running(entry, false);
    if (pOperation == nullptr) {
        return;
    }
    CheckCallNumber(entry, pOperation->calls.size() + 1);
    CALL call;
    call.function = TextAt(entry, "function");
    call.name = TextAt(entry, "name");
    call.id = NumberAt<std::uint32_t>(entry, "id");
    call.value = NumberAt<std::int64_t>(entry, "value");
    call.fromList = FlagAt(entry, "from_list");
    call.sent = BytesAt(entry, "sent");
    pOperation->calls.push_back(std::move(call));
    pOperation->bUnanswered = true;
}

void TraceReader::TakeAnswer(const Json& entry) {
    TRACED_OPERATION* pOperation = Running(entry, true);
    if (pOperation == nullptr) {
        return;
    }
    CheckCallNumber(entry, pOperation->calls.size());
    CALL& call = pOperation->calls.back();
    call.received = BytesAt(entry, "received");
    call.sizeLeft = OptionalNumberAt<std::uint32_t>(entry, "size_left");
    call.result = OptionalNumberAt<std::int32_t>(entry, "result");
    call.failure = FailureAt(entry);
    pOperation->bUnanswered = false;
}

void TraceReader::TakeResult(const Json& entry) {
    TRACED_OPERATION* pOperation = Running(entry, false);
    if (pOperation == nullptr) {
        return;
    }
    pOperation->returned = Value(entry, "record").is_null() ? Bytes() : BytesAt(entry, "record");
    pOperation->result = NumberAt<std::int32_t>(entry, "result");
    m_Running.erase(NumberAt<std::uint32_t>(entry, "operation"));
}

/// What is missing may be an answer that the operations behind it depend on.
void TraceReader::TakeGap(const Json& entry) {
    throw LineError(
        std::to_string(NumberAt<std::uint64_t>(entry, "entries")) +
        " entries are missing here: " + TextAt(entry, "why"));
}

}  // namespace

std::vector<TRACED_OPERATION> ReadTrace(const std::string& path) {
    std::istringstream file(ReadText(path));
    TraceReader reader;
    std::size_t number = 1;
    try {
        for (std::string line; std::getline(file, line) && !file.eof(); ++number) {
            reader.Take(line, number);
        }
        if (reader.IsEmpty()) {
            throw LineError("expected the first line of a trace");
        }
    } catch (const LineError& e) {
        throw TraceError(path + ':' + std::to_string(number) + ": " + e.what());
    }
    return std::move(reader.operations);
}
