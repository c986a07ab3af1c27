// A document checked value by value: a file is not trusted.
#include "jighost/records/RunRecordReader.h"

#include <algorithm>
#include <optional>

#include "jighost/records/FormerRecord.h"
#include "jighost/records/RecordReading.h"
#include "jighost/records/RunRecordForm.h"
#include "jighost/text/HostError.h"
#include "platform/TextFile.h"
#include "platform/Utf8Path.h"

/// The same document of the lines of a run that nobody has ended: one for its head, and one for
/// each step. What was cut off has no line's end. Steps stand ahead of those that the head has,
/// which are none.
static std::string JoinLines(std::string_view text) {
    const std::string_view head = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(head.size() + 1, text.size()));
    std::string steps;
    for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
        steps += (steps.empty() ? "" : ",") + std::string(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    return head.starts_with('{') ? "{\"steps\":[" + steps + "]," + std::string(head.substr(1)) : "";
}

/// Nothing for what is no object.
static std::optional<simdjson::dom::object> ParseObject(
    simdjson::dom::parser& parser, const std::string& text) {
    simdjson::dom::object object;
    return parser.parse(text).get(object) == simdjson::SUCCESS ? std::optional(object)
                                                               : std::nullopt;
}

static RUN_RECORD ReadObject(
    const std::string& path, simdjson::dom::object object, const std::string& text) {
    const ELEMENT_PLACE place{nullptr, path, 0};
    const RecordReading reading(object, place);
    std::int64_t format = 0;
    reading("format", format);
    if (format < 1 || format > RECORD_FORMAT) {
        reading.Refuse("format", "1 or 2");
    }
    return format == 1 ? ReadFormerRecord(reading, text) : reading.As<RUN_RECORD>();
}

static bool HasPassed(const RECORDED_STEP& step) {
    return step.verdict == VERDICT::PASSED;
}

RUN_RECORD ReadRunRecord(const std::string& path) {
    return ParseRunRecord(path, ReadRecordText(path));
}

std::string ReadRecordText(const std::string& path) {
    try {
        return ReadTextFile(PathOf(path), RECORD_SIZE_LIMIT);
    } catch (const std::runtime_error& e) {
        throw HostError(EXIT_WRONG_USE, e.what());
    }
}

RUN_RECORD ParseRunRecord(const std::string& path, const std::string& text) {
    simdjson::dom::parser parser;
    const auto whole = ParseObject(parser, text);
    const auto object = whole ? whole : ParseObject(parser, JoinLines(text));
    if (!object) {
        throw HostError(EXIT_WRONG_USE, path + ": expected the record of a sequence's run");
    }
    RUN_RECORD record = ReadObject(path, *object, text);
    // What stands behind the end of one that is whole is no step of it.
    if (!whole && record.verdict != VERDICT::UNFINISHED) {
        throw HostError(EXIT_WRONG_USE, path + ": expected nothing behind the record's end");
    }
    if (record.verdict == VERDICT::PASSED &&
        !std::all_of(record.steps.begin(), record.steps.end(), HasPassed)) {
        throw HostError(EXIT_WRONG_USE, path + ": outcome: expected that of its steps");
    }
    return record;
}
