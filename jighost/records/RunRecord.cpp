// A record as its document.
#include "jighost/records/RunRecord.h"

#include <algorithm>
#include <iterator>

#include "jighost/records/RunRecordForm.h"

static constexpr std::string_view VERDICTS[] = {
    "passed", "failed", "error", "aborted", "unfinished"};

std::string VerdictName(VERDICT verdict) {
    return std::string(VERDICTS[static_cast<std::size_t>(verdict)]);
}

std::optional<VERDICT> VerdictOfName(std::string_view name) {
    const auto* pFound = std::find(std::begin(VERDICTS), std::end(VERDICTS), name);
    return pFound == std::end(VERDICTS)
               ? std::nullopt
               : std::optional(static_cast<VERDICT>(pFound - std::begin(VERDICTS)));
}

namespace {

/// Makes an object of what it is given.
class RecordWriter {
  public:
    Json json = Json::object();

    template <class Value>
    void operator()(const char* pszName, const Value& value) {
        json[pszName] = ValueJson(value);
    }
    template <class Work>
    void Object(const char* pszName, const Work& work) {
        RecordWriter within;
        work(within);
        json[pszName] = std::move(within.json);
    }

  private:
    template <class Value>
    static Json ValueJson(const Value& value) {
        if constexpr (requires(RecordWriter & form) { Describe(form, value); }) {
            RecordWriter within;
            Describe(within, value);
            return std::move(within.json);
        } else {
            return value;
        }
    }
    static Json ValueJson(VERDICT verdict) { return VerdictName(verdict); }
    template <class Value>
    static Json ValueJson(const std::optional<Value>& value) {
        return value ? Json(*value) : Json();
    }
    template <class Value>
    static Json ValueJson(const std::vector<Value>& values) {
        Json list = Json::array();
        for (const Value& value : values) {
            list.push_back(ValueJson(value));
        }
        return list;
    }
    static Json ValueJson(const std::vector<std::pair<std::string, std::string>>& values) {
        Json object = Json::object();
        for (const auto& [name, value] : values) {
            object[name] = value;
        }
        return object;
    }
};

}  // namespace

Json RunRecordJson(const RUN_RECORD& record) {
    RecordWriter writer;
    writer.json["format"] = RECORD_FORMAT;
    Describe(writer, record);
    return std::move(writer.json);
}

std::string RunRecordText(const RUN_RECORD& record) {
    return JsonText(RunRecordJson(record)) + '\n';
}

Json RecordedStepJson(const RECORDED_STEP& step) {
    RecordWriter writer;
    Describe(writer, step);
    return std::move(writer.json);
}
