// Whose a file is, and where it goes on.
#include "trace/TraceHead.h"

#include <algorithm>

#include "platform/Utf8Path.h"

static std::string OptionalText(const EntryReader& entries, FIELD_ID field) {
    return entries.Has(field) ? entries.TextAt(field) : "";
}

TRACE_HEAD ReadHead(EntryReader& entries) {
    if (!entries.Next()) {
        entries.Refuse("expected the first line of a trace");
    }
    const auto format = entries.NumberAt<std::uint32_t>(FIELD_ID::FORMAT);
    if (entries.TextAt(FIELD_ID::CONTENT) != TRACE_CONTENT || format == 0 ||
        format > TRACE_FORMAT) {
        entries.Refuse(
            std::string("expected a ") + TRACE_CONTENT + " of format 1 to " +
            std::to_string(TRACE_FORMAT));
    }
    TRACE_HEAD head;
    head.started = OptionalText(entries, FIELD_ID::STARTED);
    head.machine = OptionalText(entries, FIELD_ID::MACHINE);
    head.program = OptionalText(entries, FIELD_ID::PROGRAM);
    head.continues = OptionalText(entries, FIELD_ID::CONTINUES);
    head.process = entries.NumberIfAny<std::uint32_t>(FIELD_ID::PROCESS);
    head.operationsBefore =
        entries.NumberIfAny<std::uint32_t>(FIELD_ID::OPERATIONS_BEFORE).value_or(0);
    return head;
}

std::vector<std::string> InOrder(const std::vector<std::string>& paths) {
    std::vector<std::string> ordered;
    if (paths.size() < 2) {
        return paths;
    }
    for (const std::string& path : paths) {
        EntryReader entries(path);
        const std::string former = ReadHead(entries).continues;
        const auto place =
            std::find_if(ordered.begin(), ordered.end(), [&](const std::string& each) {
                return !former.empty() && PathOf(each).filename() == PathOf(former);
            });
        ordered.insert(place == ordered.end() ? place : place + 1, path);
    }
    return ordered;
}
