// A log's operations as lines or as JSON, and their sums.
#include "jighost/log/LogOutput.h"

#include <algorithm>
#include <iostream>

#include "jighost/operations/ResultName.h"
#include "jighost/output/Colour.h"
#include "jighost/output/Json.h"

static const std::size_t WRITE_SIZE = 65536;
static const std::size_t NAME_WIDTH = 36;
/// Steps of indentation that are shown: deeper ones say no more.
static const std::size_t MAX_INDENT = 20;
/// Different failures that are counted one by one.
static const std::size_t MAX_FAILURES = 1000;

static std::string JsonLine(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n';
}

LogOutput::LogOutput(const LOG_SELECTION& selection, bool bJson)
    : m_Selection(selection), m_bJson(bJson) {
    if (m_bJson) {
        m_Text = JsonLine({{"format", JSON_FORMAT}});
    }
}

void LogOutput::Add(std::span<const LOGGED_OPERATION> operations) {
    for (const LOGGED_OPERATION& operation : operations) {
        if (!m_Selection.operation.empty() && operation.name != m_Selection.operation) {
            continue;
        }
        Count(operation);
        if (m_Selection.bFailed && !operation.HasFailed()) {
            continue;
        }
        m_bJson ? WriteJsonLine(operation) : WriteText(operation);
    }
    if (m_Text.size() >= WRITE_SIZE) {
        Flush();
    }
}

void LogOutput::Count(const LOGGED_OPERATION& operation) {
    ++m_Count;
    if (!operation.HasFailed()) {
        return;
    }
    ++m_FailedCount;
    const Failure failure(operation.result, operation.error);
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

static std::string FailureText(std::optional<std::int32_t> result, const std::string& error) {
    const std::string text = result ? ResultText(*result) : "no closing line";
    return error.empty() ? text : text + "  " + error;
}

// Written by hand, since a log may hold millions of operations.
void LogOutput::WriteText(const LOGGED_OPERATION& operation) {
    m_Text += operation.begin;
    m_Text.append(operation.begin.empty() ? 0 : 2, ' ');
    const std::size_t indent = 2 * std::min(operation.depth, MAX_INDENT);
    m_Text.append(indent, ' ');
    m_Text += operation.name;
    m_Text.append(NAME_WIDTH - std::min(NAME_WIDTH, indent + operation.name.size()), ' ');
    m_Text += ' ';
    if (operation.HasFailed()) {
        m_Text += Coloured(FailureText(operation.result, operation.error), COLOUR::RED);
    } else {
        m_Text += std::to_string(*operation.result);
    }
    m_Text += '\n';
}

void LogOutput::WriteSummary() {
    m_Text += '\n' + std::to_string(m_Count) + " operations, " + std::to_string(m_FailedCount) +
              " failed\n";
    for (const auto& [failure, count] : m_Failures) {
        std::string number = std::to_string(count);
        number.insert(0, 8 - std::min<std::size_t>(8, number.size()), ' ');
        m_Text += number + "  " + FailureText(failure.first, failure.second) + '\n';
    }
    if (m_OtherFailures > 0) {
        m_Text += "  and " + std::to_string(m_OtherFailures) + " others\n";
    }
}

// --- For programs ---

static Json FailureJson(std::optional<std::int32_t> result, const std::string& error) {
    Json json = {{"result", nullptr}, {"result_name", nullptr}, {"error", error}};
    if (result) {
        json["result"] = *result;
        json["result_name"] = ResultName(*result);
    }
    return json;
}

void LogOutput::WriteJsonLine(const LOGGED_OPERATION& operation) {
    Json json = {
        {"operation", operation.name},
        {"depth", operation.depth},
        {"begin", operation.begin},
        {"end", operation.end},
    };
    json.update(FailureJson(operation.result, operation.error));
    m_Text += JsonLine(json);
}

void LogOutput::WriteSummaryAsJson() {
    Json failures = Json::array();
    for (const auto& [failure, count] : m_Failures) {
        Json json = FailureJson(failure.first, failure.second);
        json["count"] = count;
        failures.push_back(json);
    }
    m_Text += JsonLine(
        {{"summary",
          {{"operations", m_Count},
           {"failed", m_FailedCount},
           {"failures", failures},
           {"other_failures", m_OtherFailures}}}});
}
