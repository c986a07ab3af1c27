// Calls with the log lines between them, as a trace on the screen has them.
#include "jighost/recording/WholeOperation.h"

#include <algorithm>
#include <iomanip>

#include "jighost/operations/OperationTable.h"
#include "jighost/output/CallText.h"
#include "jighost/recording/Moment.h"
#include "jighost/recording/TraceOutput.h"
#include "jighost/text/PlainText.h"
#include "trace/Hex.h"

static const int NUMBER_WIDTH = 4;

static void ShowBytes(
    std::ostream& out, const char* pszTitle, const TRACED_OPERATION& operation,
    const Link::Bytes& bytes) {
    const OPERATION_INFO* pInfo = FindOperation(operation.name);
    if (operation.bNullRecord) {
        out << pszTitle << ": a null pointer\n";
    } else if (bytes.empty()) {
        return;
    } else if (pInfo == nullptr || bytes.size() < pInfo->record->size) {
        out << pszTitle << ": " << HexBytes(bytes) << '\n';
    } else {
        out << pszTitle << ":\n";
        ShowRecord(out, *pInfo->record, bytes);
    }
}

static void ShowLogLines(
    std::ostream& out, const TRACED_OPERATION& operation, std::size_t& next, std::size_t calls) {
    for (; next < operation.log.size() && operation.log[next].calls <= calls; ++next) {
        const TRACED_LOG_LINE& line = operation.log[next];
        out << std::string(NUMBER_WIDTH + 1, ' ') << PlainText(line.text)
            << (line.bInterleaved ? " (interleaved)\n" : "\n");
    }
}

static void ShowThrows(
    std::ostream& out, const TRACED_OPERATION& operation, std::size_t& next, std::size_t calls) {
    for (; next < operation.throws.size() && operation.throws[next].calls <= calls; ++next) {
        out << std::string(NUMBER_WIDTH + 1, ' ') << ThrowText(operation.throws[next].thrown)
            << '\n';
    }
}

static void ShowCalls(std::ostream& out, const TRACED_OPERATION& operation) {
    std::size_t line = 0;
    std::size_t thrown = 0;
    ShowThrows(out, operation, thrown, 0);
    ShowLogLines(out, operation, line, 0);
    for (std::size_t i = 0; i < operation.calls.size(); ++i) {
        const Link::CALL& call = operation.calls[i];
        out << std::right << std::setw(NUMBER_WIDTH) << i + 1 << ' ' << RequestText(call);
        if (i < operation.callTimes.size()) {
            out << " -> " << AnswerText(call) << " (" << MillisecondsText(operation.callTimes[i])
                << ")\n";
        } else {
            out << ", which has no answer\n";
        }
        ShowThrows(out, operation, thrown, i + 1);
        ShowLogLines(out, operation, line, i + 1);
    }
    const std::string indent(NUMBER_WIDTH + 1, ' ');
    if (operation.bLogUnread) {
        out << indent << "(the log was not read)\n";
    }
    if (operation.logLeftOut != 0) {
        out << indent << "... (" << operation.logLeftOut << " bytes more of the log)\n";
    }
}

void ShowOperation(
    std::ostream& out, const TRACED_OPERATION& operation, const std::string& moment) {
    out << "operation " << operation.number << ", " << PlainText(operation.name)
        << (moment.empty() ? "" : ", " + moment) << '\n';
    ShowBytes(out, "record before", operation, operation.record);
    ShowCalls(out, operation);
    out << PlainText(operation.name) << ": " << OutcomeText(operation) << ", "
        << operation.callCount << (operation.callCount == 1 ? " call" : " calls");
    if (operation.result) {
        out << ", " << MillisecondsText(operation.time) << '\n';
        ShowBytes(out, "record after", operation, operation.returned);
    } else {
        out << '\n';
    }
}

// --- For programs ---

/// By its fields where these are known, else as its bytes.
static Json BytesJson(const TRACED_OPERATION& operation, const Link::Bytes& bytes) {
    const OPERATION_INFO* pInfo = FindOperation(operation.name);
    if (operation.bNullRecord) {
        return nullptr;
    }
    if (pInfo == nullptr || bytes.size() < pInfo->record->size) {
        return HexBytes(bytes);
    }
    return RecordJson(*pInfo->record, bytes);
}

template <class Value>
static Json OptionalJson(const std::optional<Value>& value) {
    return value ? Json(*value) : Json(nullptr);
}

static Json FailureJson(const std::optional<Link::FAILURE>& failure) {
    if (!failure) {
        return nullptr;
    }
    const auto* pNamed = std::find_if(
        std::begin(TRACED_FAULTS), std::end(TRACED_FAULTS),
        [&](const TRACED_FAULT& fault) { return fault.kind == failure->kind; });
    return {{"kind", pNamed->name}, {"code", failure->code}, {"message", failure->message}};
}

static Json CallsJson(const TRACED_OPERATION& operation) {
    Json calls = Json::array();
    for (std::size_t i = 0; i < operation.calls.size(); ++i) {
        const Link::CALL& call = operation.calls[i];
        Json json = {{"function", call.function},
                     {"name", call.name},
                     {"id", call.id},
                     {"value", call.value},
                     {"from_list", call.fromList},
                     {"sent", HexBytes(call.sent)}};
        if (i < operation.callTimes.size()) {
            json["received"] = HexBytes(call.received);
            json["size_left"] = OptionalJson(call.sizeLeft);
            json["result"] = OptionalJson(call.result);
            json["failure"] = FailureJson(call.failure);
            json["time_ms"] = operation.callTimes[i];
        }
        calls.push_back(json);
    }
    return calls;
}

static Json ThrowsJson(const TRACED_OPERATION& operation) {
    Json throws = Json::array();
    for (const auto& [calls, thrown] : operation.throws) {
        throws.push_back(
            {{"function", thrown.function},
             {"number", thrown.number},
             {"calls_before", calls},
             {"failure", FailureJson(thrown.failure)}});
    }
    return throws;
}

Json WholeOperationJson(const TRACED_OPERATION& operation) {
    Json json = OperationJson(operation);
    json["record_before"] = BytesJson(operation, operation.record);
    json["record_after"] = operation.result ? BytesJson(operation, operation.returned) : Json();
    json["calls"] = CallsJson(operation);
    json["thrown"] = ThrowsJson(operation);
    json["log"] = Json::array();
    for (const TRACED_LOG_LINE& line : operation.log) {
        json["log"].push_back(line.text);
    }
    json["log_read"] = !operation.bLogUnread;
    json["log_left_out"] = operation.logLeftOut;
    return json;
}
