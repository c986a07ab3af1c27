// Values taken from a record, and held against limits and patterns.
#include "jighost/sequence/Measure.h"

#include <algorithm>

#include "jighost/sequence/Pattern.h"

/// Without the quotes of a text.
static std::string MeasuredText(
    const RECORD& form, const RecordBytes& record, const std::string& field) {
    const std::string text = FieldText(form, record, field);
    return FieldKind(form, field) == FIELD_KIND::TEXT ? text.substr(1, text.size() - 2) : text;
}

static MEASUREMENT Take(const MEASURE& measure, const RECORD& form, const RecordBytes& record) {
    MEASUREMENT measurement;
    measurement.measure = &measure;
    measurement.text = MeasuredText(form, record, measure.field);
    measurement.number = FieldNumber(form, record, measure.field);
    if (measurement.number) {
        measurement.bWithin = measure.limits.Hold(*measurement.number);
    } else if (!measure.pattern.empty()) {
        measurement.bWithin = IsOfPattern(measurement.text, measure.pattern);
    }
    return measurement;
}

std::vector<MEASUREMENT> Measured(
    const std::vector<MEASURE>& measures, const RECORD& form, const RecordBytes& record) {
    std::vector<MEASUREMENT> measurements;
    std::transform(
        measures.begin(), measures.end(), std::back_inserter(measurements),
        [&](const MEASURE& measure) { return Take(measure, form, record); });
    return measurements;
}

static std::string WithUnit(const std::string& text, const MEASURE& measure) {
    return text + (measure.unit.empty() ? "" : ' ' + measure.unit);
}

static std::string Expected(const MEASURE& measure) {
    return measure.pattern.empty() ? LimitsText(measure.limits) : "like " + measure.pattern;
}

std::string MeasurementText(const MEASUREMENT& measurement) {
    const MEASURE& measure = *measurement.measure;
    const std::string value = measure.name + ": " + WithUnit(measurement.text, measure);
    return measure.IsJudged() ? value + " (" + Expected(measure) + "), " +
                                    (measurement.bWithin ? "passed" : "failed")
                              : value;
}

std::string MeasurementProblem(const MEASUREMENT& measurement) {
    const MEASURE& measure = *measurement.measure;
    return measure.name + ": expected " + WithUnit(Expected(measure), measure) + ", got " +
           WithUnit(measurement.text, measure);
}
