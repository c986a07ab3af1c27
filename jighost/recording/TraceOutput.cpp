// Rows and summaries, for people and for programs.
#include "jighost/recording/TraceOutput.h"

#include <algorithm>
#include <iostream>

#include "frame/Result.h"
#include "jighost/operations/ResultName.h"
#include "jighost/output/Colour.h"
#include "jighost/output/RowWriter.h"
#include "jighost/text/HostError.h"
#include "jighost/text/PlainText.h"
#include "trace/Utf8.h"

static const std::size_t WRITTEN_AT_ONCE = 65536;
/// Different failures that are counted one by one.
static const std::size_t MAX_FAILURE_KINDS = 1000;

TraceOutput::TraceOutput(TRACE_SELECTION selection, bool bJson)
    : m_Selection(std::move(selection)), m_bJson(bJson) {
    if (m_bJson) {
        m_Text = JsonText({{"format", JSON_FORMAT}}, ON_ONE_LINE) + '\n';
    }
}

void TraceOutput::Flush() {
    std::cout << m_Text << std::flush;
    m_Text.clear();
}

void TraceOutput::Add(const TraceReader& reader, const TRACED_OPERATION& operation) {
    if (!operation.at && m_Selection.HasMoments()) {
        throw HostError(
            EXIT_WRONG_USE, reader.Path() + ':' + std::to_string(operation.line) +
                                ": tells no moment, as --since and --until need it");
    }
    const std::string_view moment = operation.at ? m_Moments.Text(*operation.at) : "";
    if (!m_Selection.Has(operation, moment)) {
        return;
    }
    CountIn(operation);
    if (m_Selection.bFailed && !HasFailed(operation)) {
        return;
    }
    if (m_bJson) {
        m_Text += JsonText(OperationJson(operation), ON_ONE_LINE) + '\n';
    } else {
        WriteRow(operation, moment);
    }
    if (m_Text.size() >= WRITTEN_AT_ONCE) {
        Flush();
    }
}

void TraceOutput::CountIn(const TRACED_OPERATION& operation) {
    ++m_Count;
    if (!HasFailed(operation)) {
        return;
    }
    ++m_FailedCount;
    if (!operation.result) {
        ++m_EndlessCount;
        return;
    }
    const std::pair failure(operation.name, *operation.result);
    if (m_Failures.size() < MAX_FAILURE_KINDS || m_Failures.contains(failure)) {
        ++m_Failures[failure];
    } else {
        ++m_OtherFailures;
    }
}

// --- Rows for people ---

// Characters of the columns.
static const std::size_t OPERATION_WIDTH = 7;
static const std::size_t LISTED_NAME_WIDTH = 32;
static const std::size_t OUTCOME_WIDTH = 24;
static const std::size_t COUNT_WIDTH = 6;
/// Of a row without name and outcome.
static const std::size_t MOST_ELSE = 160;

static std::string OutcomeCell(const std::string& text) {
    return text + std::string(OUTCOME_WIDTH - std::min(OUTCOME_WIDTH, text.size()) + 1, ' ');
}

static const std::string SUCCESS_CELL = OutcomeCell(ResultText(RESULT_SUCCESS));

void TraceOutput::BeginFile(const TraceReader& reader) {
    const TRACE_HEAD& head = reader.Head();
    m_Moments = MomentTexts(ZoneOf(head.started));
    if (m_bJson) {
        const Json process = head.process ? Json(*head.process) : Json(nullptr);
        const Json file = {{"file", reader.Path()},   {"machine", head.machine},
                           {"process", process},      {"program", head.program},
                           {"started", head.started}, {"continues", head.continues}};
        m_Text += JsonText(file, ON_ONE_LINE) + '\n';
        return;
    }
    m_Text += PlainText(reader.Path());
    if (head.process) {
        m_Text += ": " + PlainText(head.program) + ", process " + std::to_string(*head.process) +
                  " on " + PlainText(head.machine) + ", from " + PlainText(head.started);
    }
    m_Text += head.continues.empty() ? "" : ", goes on from " + PlainText(head.continues);
    m_Text += '\n';
}

static void PutTime(RowWriter& row, const TRACED_OPERATION& operation) {
    static const std::string_view NONE = "           -";
    static const std::string_view UNIT = " ms";
    if (!operation.result) {
        row.Put(NONE);
        return;
    }
    const std::uint64_t microseconds = Microseconds(operation.time);
    row.PutRight(microseconds / 1000, NONE.size() - UNIT.size() - 4);
    row.Put(".");
    row.PutLast(microseconds, 3);
    row.Put(UNIT);
}

/// Of an operation that did not simply succeed.
static std::string OtherOutcome(const TRACED_OPERATION& operation) {
    const std::string cell = OutcomeCell(OutcomeText(operation));
    return HasFailed(operation) ? Coloured(cell, COLOUR::RED) : cell;
}

// For most operations nothing is copied that the row does not have.
void TraceOutput::WriteRow(const TRACED_OPERATION& operation, std::string_view moment) {
    const bool bPlain = IsPrintable(operation.name);
    const bool bSuccess = operation.result == RESULT_SUCCESS && !operation.bTorn;
    const std::string plain = bPlain ? std::string() : PlainText(operation.name);
    const std::string other = bSuccess ? std::string() : OtherOutcome(operation);
    const std::string_view name = bPlain ? operation.name : plain;
    const std::string_view outcome = bSuccess ? SUCCESS_CELL : other;
    RowWriter row(m_Text, MOST_ELSE + name.size() + outcome.size());
    row.PutRight(operation.number, OPERATION_WIDTH);
    row.Put("  ");
    row.PutLeft(moment, moment.empty() ? 0 : moment.size() + 2);
    row.PutLeft(name, LISTED_NAME_WIDTH);
    row.Put(" ");
    row.Put(outcome);
    PutTime(row, operation);
    row.PutRight(operation.callCount, COUNT_WIDTH);
    row.Put(operation.callCount == 1 ? " call   " : " calls  ");
    if (operation.serial) {
        row.PutRight(*operation.serial, 0);
    } else {
        row.Put("-");
    }
    row.Put("\n");
}

void TraceOutput::AddGap(const TRACED_GAP& gap) {
    ++m_Gaps;
    const Json moment = gap.at ? Json(*gap.at) : Json(nullptr);
    if (m_bJson) {
        const Json json = {{"missing", gap.entries}, {"at", moment}, {"why", gap.why}};
        m_Text += JsonText(json, ON_ONE_LINE) + '\n';
        return;
    }
    m_Text.append(OPERATION_WIDTH + 2, ' ');
    m_Text += gap.at ? std::string(m_Moments.Text(*gap.at)) + "  " : "";
    m_Text += Coloured(
        std::to_string(gap.entries) + " entries are missing: " + PlainText(gap.why), COLOUR::RED);
    m_Text += '\n';
}

// --- The end ---

void TraceOutput::WriteSummary(const TraceReader& reader) {
    const auto add = [this](std::uint64_t count, const char* pszWhat) {
        m_Text += count == 0 ? "" : ", " + std::to_string(count) + pszWhat;
    };
    m_Text += '\n' + std::to_string(m_Count) + (m_Count == 1 ? " operation, " : " operations, ") +
              std::to_string(m_FailedCount) + " failed";
    add(m_EndlessCount, " of these without an end");
    add(m_Gaps, m_Gaps == 1 ? " gap" : " gaps");
    add(reader.Beginningless(), " without a beginning");
    add(reader.OtherCalls(), " calls outside all operations");
    m_Text += '\n';
    for (const auto& [failure, count] : m_Failures) {
        const std::string name = PlainText(failure.first);
        const std::string result = ResultText(failure.second);
        RowWriter row(m_Text, MOST_ELSE + name.size() + result.size());
        row.PutRight(count, OPERATION_WIDTH);
        row.Put("  ");
        row.PutLeft(name, LISTED_NAME_WIDTH);
        row.Put(" ");
        row.Put(result);
        row.Put("\n");
    }
    if (m_OtherFailures > 0) {
        m_Text += "  and " + std::to_string(m_OtherFailures) + " others\n";
    }
}

Json OperationJson(const TRACED_OPERATION& operation) {
    Json json = {{"number", operation.number}, {"at", nullptr}, {"operation", operation.name}};
    if (operation.at) {
        json["at"] = *operation.at;
    }
    json.update(ResultJson(operation.result));
    json["time_ms"] = operation.result ? Json(operation.time) : Json(nullptr);
    json["calls"] = operation.callCount;
    json["unanswered"] = operation.bUnanswered;
    json["whole"] = !operation.bTorn;
    json["serial"] = operation.serial ? Json(*operation.serial) : Json(nullptr);
    return json;
}

void TraceOutput::End(const TraceReader& reader) {
    if (!m_bJson) {
        WriteSummary(reader);
        Flush();
        return;
    }
    Json failures = Json::array();
    for (const auto& [failure, count] : m_Failures) {
        Json json = {{"operation", failure.first}};
        json.update(ResultJson(failure.second));
        json["count"] = count;
        failures.push_back(json);
    }
    const Json summary = {
        {"operations", m_Count},
        {"failed", m_FailedCount},
        {"endless", m_EndlessCount},
        {"gaps", m_Gaps},
        {"beginningless", reader.Beginningless()},
        {"other_calls", reader.OtherCalls()},
        {"failures", failures},
        {"other_failures", m_OtherFailures}};
    m_Text += JsonText({{"summary", summary}}, ON_ONE_LINE) + '\n';
    Flush();
}
