// Numbers and outcomes for people.
#include "jighost/report/Words.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "jighost/text/Limits.h"

static Markup Badge(std::string_view outcome) {
    Markup badge;
    badge << R"(<span class="badge )"_tag << outcome << R"(">)"_tag << outcome << "</span>"_tag;
    return badge;
}

Markup OutcomeBadge(VERDICT verdict) {
    return Badge(VerdictName(verdict));
}

Markup OutcomeBadge(const RECORDED_MEASUREMENT& measurement) {
    return measurement.bJudged ? Badge(measurement.bWithin ? "passed" : "failed") : Markup();
}

std::string FixedText(double number, int decimals) {
    std::array<char, 400> text{};  // of the greatest number
    const auto [end, error] = std::to_chars(
        text.data(), text.data() + text.size(), number, std::chars_format::fixed, decimals);
    return {text.data(), end};
}

std::string DurationText(double ms) {
    if (ms >= 1000) {
        return FixedText(ms / 1000, 2) + " s";
    }
    return FixedText(ms, ms < 10 ? 2 : 1) + " ms";
}

std::string SerialText(const RUN_RECORD& record) {
    return record.serial ? std::to_string(*record.serial) : "unknown";
}

bool HasMoments(const RUN_RECORD& record) {
    return record.startedAt != 0;
}

std::string StartText(const RUN_RECORD& record) {
    std::string text = HasMoments(record) ? record.started : "unknown";
    std::replace(text.begin(), text.end(), 'T', ' ');
    return text;
}

std::string StepTitle(const RECORDED_STEP& step) {
    return std::to_string(step.number) + ", " + step.name;
}

std::string DemandText(const RECORDED_MEASUREMENT& measurement) {
    return measurement.pattern.empty() ? LimitsText({measurement.min, measurement.max})
                                       : "like " + measurement.pattern;
}

std::string ValueText(const RECORDED_MEASUREMENT& measurement) {
    return measurement.text + (measurement.unit.empty() ? "" : " " + measurement.unit);
}

std::string FieldText(const Json& value) {
    if (value.is_string()) {
        return value.get<std::string>();
    }
    if (!value.is_array()) {
        return value.dump(-1, ' ', false, Json::error_handler_t::replace);
    }
    std::string text;
    for (const Json& each : value) {
        text += (text.empty() ? "" : ", ") + FieldText(each);
    }
    return text;
}
