// A document checked value by value: a file is not trusted.
#include "jighost/records/RunRecordReader.h"

#include <algorithm>

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

static simdjson::dom::object ParseObject(
    simdjson::dom::parser& parser, const std::string& path, const std::string& text) {
    simdjson::dom::object object;
    if (parser.parse(text).get(object) != simdjson::SUCCESS &&
        parser.parse(JoinLines(text)).get(object) != simdjson::SUCCESS) {
        throw HostError(EXIT_WRONG_USE, path + ": expected the record of a sequence's run");
    }
    return object;
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
    const ELEMENT_PLACE place{nullptr, path, 0};
    const RecordReading reading(ParseObject(parser, path, text), place);
    std::int64_t format = 0;
    reading("format", format);
    if (format < 1 || format > RECORD_FORMAT) {
        reading.Refuse("format", "1 or 2");
    }
    return format == 1 ? ReadFormerRecord(reading, text) : reading.As<RUN_RECORD>();
}
