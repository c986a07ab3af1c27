// Rows and summaries, for people and for programs.
#include "jighost/log/LogOutput.h"

#include <algorithm>
#include <iostream>

#include "jighost/operations/ResultName.h"
#include "jighost/output/Colour.h"
#include "jighost/output/Json.h"
#include "jighost/text/PlainText.h"

static const std::size_t WRITE_SIZE = 65536;
static const std::size_t NAME_WIDTH = 36;
/// Steps of indentation that are shown: deeper ones say no more.
static const std::size_t MAX_INDENT = 20;
/// Different failures that are counted one by one.
static const std::size_t MAX_FAILURES = 1000;

static std::string LineOfJson(const Json& json) {
    return JsonText(json, ON_ONE_LINE) + '\n';
}

LogOutput::LogOutput(const LOG_SELECTION& selection, bool bJson)
    : m_Selection(selection), m_bJson(bJson) {
    if (m_bJson) {
        m_Text = LineOfJson({{"format", JSON_FORMAT}});
    }
}

void LogOutput::Add(std::span<const LOGGED_OPERATION> operations) {
    for (const LOGGED_OPERATION& operation : operations) {
        if (!m_Selection.operation.empty() && operation.name != m_Selection.operation) {
            continue;
        }
        CountIn(operation);
        if (m_Selection.bFailed && !operation.HasFailed()) {
            continue;
        }
        m_bJson ? WriteJsonLine(operation) : WriteText(operation);
    }
    if (m_Text.size() >= WRITE_SIZE) {
        Flush();
    }
}

void LogOutput::CountIn(const LOGGED_OPERATION& operation) {
    ++m_Count;
    if (!operation.HasFailed()) {
        m_InterleavedCount += operation.result ? 0U : 1U;
        return;
    }
    ++m_FailedCount;
    const Failure failure(operation.name, operation.result, operation.error);
    if (m_Failures.size() < MAX_FAILURES || m_Failures.contains(failure)) {
        ++m_Failures[failure];
    } else {
        ++m_OtherFailures;
    }
}

void LogOutput::Flush() {
    std::cout << m_Text << std::flush;
    m_Text.clear();
}

void LogOutput::End() {
    m_bJson ? WriteSummaryAsJson() : WriteSummary();
    Flush();
}

// --- For people ---

/// A name, which has no harmful characters, and blanks up to the width of names.
static void AppendName(std::string& target, std::string_view name, std::size_t indent) {
    target.append(indent, ' ');
    target += name;
    target.append(NAME_WIDTH - std::min(NAME_WIDTH, indent + name.size()), ' ');
    target += ' ';
}

/// The first line of an error.
static std::string_view FirstLine(const std::string& error) {
    return std::string_view(error).substr(0, error.find('\n'));
}

/// An error as it stands behind a result.
static void AppendError(std::string& target, const std::string& error) {
    if (!error.empty()) {
        target += "  ";
        target += PlainText(FirstLine(error));
    }
}

static std::string FailureText(std::optional<std::int32_t> result, const std::string& error) {
    std::string text = result ? ResultText(*result) : "no closing line";
    AppendError(text, error);
    return text;
}

/// An error's further lines, each as one of its own.
static void AppendFurtherLines(std::string& target, const std::string& error) {
    std::string_view rest = std::string_view(error).substr(FirstLine(error).size());
    while (!rest.empty()) {
        rest.remove_prefix(1);
        const std::string_view line = rest.substr(0, rest.find('\n'));
        target += "    | ";
        target += PlainText(line);
        target += '\n';
        rest.remove_prefix(line.size());
    }
}

static std::string OutcomeText(const LOGGED_OPERATION& operation) {
    if (!operation.HasFailed()) {
        std::string text = operation.result ? std::to_string(*operation.result) : "interleaved";
        AppendError(text, operation.error);
        return text;
    }
    std::string text = FailureText(operation.result, operation.error);
    text += operation.bInterleaved ? "  (interleaved)" : "";
    text += operation.bOpened ? "" : "  (no opening line)";
    return Coloured(text, COLOUR::RED);
}

// Most operations begin in the same millisecond as the one before.
void LogOutput::AppendTime(const std::string& time) {
    if (time != m_LastTime) {
        m_LastTime = time;
        m_ShownTime = time.empty() ? "" : PlainText(time) + "  ";
    }
    m_Text += m_ShownTime;
}

// Written by hand, since a log may hold millions of operations.
void LogOutput::WriteText(const LOGGED_OPERATION& operation) {
    AppendTime(operation.bOpened ? operation.begin : operation.end);
    AppendName(m_Text, operation.name, 2 * std::min(operation.depth, MAX_INDENT));
    m_Text += OutcomeText(operation);
    m_Text += '\n';
    AppendFurtherLines(m_Text, operation.error);
}

void LogOutput::WriteSummary() {
    m_Text += '\n' + std::to_string(m_Count) + " operations, " + std::to_string(m_FailedCount) +
              " failed";
    if (m_InterleavedCount > 0) {
        m_Text += ", " + std::to_string(m_InterleavedCount) + " interleaved";
    }
    m_Text += '\n';
    for (const auto& [failure, count] : m_Failures) {
        const auto& [name, result, error] = failure;
        std::string number = std::to_string(count);
        number.insert(0, 8 - std::min<std::size_t>(8, number.size()), ' ');
        m_Text += number + "  ";
        AppendName(m_Text, name, 0);
        m_Text += FailureText(result, error) + '\n';
        AppendFurtherLines(m_Text, error);
    }
    if (m_OtherFailures > 0) {
        m_Text += "  and " + std::to_string(m_OtherFailures) + " others\n";
    }
}

// --- For programs ---

void LogOutput::WriteJsonLine(const LOGGED_OPERATION& operation) {
    Json json = {
        {"operation", operation.name},
        {"depth", operation.depth},
        {"begin", operation.begin},
        {"end", operation.end},
    };
    if (!operation.bOpened) {
        json["begin"] = nullptr;
    }
    json.update(ResultJson(operation.result));
    json["error"] = operation.error;
    json["interleaved"] = operation.bInterleaved;
    m_Text += LineOfJson(json);
}

void LogOutput::WriteSummaryAsJson() {
    Json failures = Json::array();
    for (const auto& [failure, count] : m_Failures) {
        const auto& [name, result, error] = failure;
        Json json = {{"operation", name}};
        json.update(ResultJson(result));
        json["error"] = error;
        json["count"] = count;
        failures.push_back(json);
    }
    m_Text += LineOfJson(
        {{"summary",
          {{"operations", m_Count},
           {"failed", m_FailedCount},
           {"interleaved", m_InterleavedCount},
           {"failures", failures},
           {"other_failures", m_OtherFailures}}}});
}
