// A document checked value by value: a file is not trusted.
#include "jighost/records/RunRecordReader.h"

#include <algorithm>

#include "jighost/records/FormerRecord.h"
#include "jighost/records/RecordReading.h"
#include "jighost/records/RunRecordForm.h"
#include "jighost/text/HostError.h"
#include "platform/TextFile.h"
#include "platform/Utf8Path.h"

/// Throws EXIT_WRONG_USE for what is no JSON object.
static Json ParseObject(const std::string& path, std::string_view text) {
    Json json = Json::parse(text, nullptr, false);
    if (!json.is_object()) {
        throw HostError(EXIT_WRONG_USE, path + ": expected the record of a sequence's run");
    }
    return json;
}

/// Of a run that nobody has ended: a line for its head, and one for each step. What was cut off has
/// no line's end.
static Json ParseLines(const std::string& path, std::string_view text) {
    const auto head = text.find('\n');
    Json json = ParseObject(path, text.substr(0, head));
    text.remove_prefix(std::min(head, text.size() - 1) + 1);
    Json& steps = json["steps"] = Json::array();
    for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
        steps.push_back(ParseObject(path, text.substr(0, end)));
        text.remove_prefix(end + 1);
    }
    return json;
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
    const Json json = Json::accept(text) ? ParseObject(path, text) : ParseLines(path, text);
    std::int64_t format = 0;
    const RecordReading reading(json, path + ": ");
    reading("format", format);
    if (format < 1 || format > RECORD_FORMAT) {
        reading.Refuse("format", "1 or 2");
    }
    return format == 1 ? ReadFormerRecord(reading, text) : reading.As<RUN_RECORD>();
}
