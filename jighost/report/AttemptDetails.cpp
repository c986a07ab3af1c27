// Tables of what an attempt had to do with.
#include "jighost/report/AttemptDetails.h"

#include <initializer_list>
#include <set>

#include "jighost/report/StepPlace.h"
#include "jighost/report/Words.h"

// --- The record ---

static std::string FieldText(const Json& fields, const std::string& name) {
    return fields.contains(name) ? FieldText(fields[name]) : "";
}

/// All that one of the records has.
static std::vector<std::string> FieldNames(std::initializer_list<const Json*> records) {
    std::vector<std::string> names;
    std::set<std::string> known;
    for (const Json* pRecord : records) {
        for (const auto& each : pRecord->items()) {
            if (known.insert(each.key()).second) {
                names.push_back(each.key());
            }
        }
    }
    return names;
}

static Markup FieldRow(
    const RECORDED_STEP& step, const RECORDED_ATTEMPT& attempt, const std::string& name) {
    const std::string before = FieldText(attempt.before, name);
    const std::string after = FieldText(attempt.after, name);
    const std::string expected = FieldText(step.expectedFields, name);
    const bool bOther =
        step.expectedFields.contains(name) && attempt.after.contains(name) && expected != after;
    Markup row;
    row << (bOther ? R"(<tr class="failed">)"_tag : "<tr>"_tag) << R"(<th scope="row">)"_tag << name
        << "</th><td><code>"_tag << before
        << (before.empty() || before == after ? "</code></td><td><code>"_tag
                                              : R"(</code></td><td class="changed"><code>)"_tag)
        << after << "</code></td><td><code>"_tag << expected << "</code></td></tr>\n"_tag;
    return row;
}

static Markup FieldTable(const RECORDED_STEP& step, const RECORDED_ATTEMPT& attempt) {
    Markup table;
    const auto names = FieldNames({&attempt.before, &attempt.after, &step.expectedFields});
    if (names.empty()) {
        return table;
    }
    table << "<div class=\"wide\"><table class=\"fields\"><caption>Record</caption>\n<thead><tr>"
             "<th scope=\"col\">Field</th><th scope=\"col\">Before</th><th scope=\"col\">After</th>"
             "<th scope=\"col\">Expected</th></tr></thead>\n<tbody>\n"_tag;
    for (const std::string& name : names) {
        table << FieldRow(step, attempt, name);
    }
    table << "</tbody></table></div>\n"_tag;
    return table;
}

// --- The calls ---

static Markup Bytes(const std::string& bytes, std::uint64_t size) {
    Markup cell;
    if (size > 0) {
        cell << size << (size == 1 ? " byte" : " bytes")
             << (size > RECORDED_BYTES ? ", the first of them:" : ":") << " <code>"_tag << bytes
             << "</code>"_tag;
    }
    return cell;
}

static Markup CallRow(const RECORDED_CALL& call, std::size_t number, const std::string& place) {
    Markup row;
    row << R"(<tr id=")"_tag << place << (call.bFailed ? R"(" class="failed">)"_tag : R"(">)"_tag)
        << R"(<th scope="row" class="number">)"_tag << number << R"(</th><td class="number">)"_tag
        << DurationText(call.startMs) << R"(</td><td class="number">)"_tag
        << DurationText(call.timeMs) << "</td><td><code>"_tag << call.request
        << "</code></td><td><code>"_tag << call.answer << R"(</code></td><td class="bytes">)"_tag
        << Bytes(call.sent, call.sentSize) << R"(</td><td class="bytes">)"_tag
        << Bytes(call.received, call.receivedSize) << "</td></tr>\n"_tag;
    return row;
}

static Markup CallTable(
    const RECORDED_ATTEMPT& attempt, std::size_t index, const std::string& place) {
    Markup table;
    if (attempt.calls.empty()) {
        return table;
    }
    table
        << "<div class=\"wide\"><table class=\"calls\"><caption>Link calls</caption>\n<thead><tr>"
           "<th scope=\"col\" class=\"number\">Call</th>"
           "<th scope=\"col\" class=\"number\">At</th><th scope=\"col\" class=\"number\">Took</th>"
           "<th scope=\"col\">Request</th><th scope=\"col\">Answer</th>"
           "<th scope=\"col\">Sent</th><th scope=\"col\">Received</th></tr></thead>\n"
           "<tbody>\n"_tag;
    for (std::size_t i = 0; i < attempt.calls.size(); ++i) {
        table << CallRow(attempt.calls[i], i + 1, CallPlace(place, index, i));
    }
    table << "</tbody></table></div>\n"_tag;
    return table;
}

// --- The log, and all together ---

static Markup LogLines(TAG title, const std::vector<std::string>& lines) {
    Markup log;
    if (lines.empty()) {
        return log;
    }
    log << "<h5>"_tag << title << "</h5>\n<pre>"_tag;
    for (const std::string& line : lines) {
        const bool bError = line.find("[ERR!]") != std::string::npos;
        log << (bError ? "<b>"_tag : ""_tag) << line << (bError ? "</b>\n"_tag : "\n"_tag);
    }
    log << "</pre>\n"_tag;
    return log;
}

static Markup Heading(const RECORDED_STEP& step, std::size_t index) {
    const RECORDED_ATTEMPT& attempt = step.attempts[index];
    Markup heading;
    heading << "<h4>Attempt "_tag << index + 1 << " of " << step.attempts.size() << ": ";
    if (attempt.result) {
        heading << attempt.resultName << " (" << *attempt.result << ")";
    } else {
        heading << "did not return";
    }
    heading << ", " << DurationText(attempt.timeMs) << "</h4>\n"_tag;
    if (!attempt.error.empty()) {
        heading << R"(<p class="problem">)"_tag << attempt.error << "</p>\n"_tag;
    }
    return heading;
}

Markup AttemptDetails(const RECORDED_STEP& step, std::size_t index, const std::string& place) {
    const RECORDED_ATTEMPT& attempt = step.attempts[index];
    Markup details;
    details << Heading(step, index) << FieldTable(step, attempt) << CallTable(attempt, index, place)
            << LogLines("Log"_tag, attempt.log)
            << LogLines("Log lines that may be another process's"_tag, attempt.interleaved);
    return details;
}
