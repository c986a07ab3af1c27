// Measurements and expectations are taken over with what the sequence's file says of them.
#include "jighost/sequence/RecordedStep.h"

#include "jighost/operations/ResultName.h"
#include "jighost/output/Json.h"
#include "jighost/text/Numbers.h"

static RECORDED_MEASUREMENT RecordedMeasurement(const MEASUREMENT& measurement) {
    const MEASURE& measure = *measurement.measure;
    return {
        .name = measure.name,
        .field = measure.field,
        .unit = measure.unit,
        .text = measurement.text,
        .number = measurement.number,
        .min = measure.limits.min,
        .max = measure.limits.max,
        .pattern = measure.pattern,
        .bJudged = measure.IsJudged(),
        .bWithin = measurement.bWithin,
    };
}

/// The fields by the names that the sequence gives them, which may be those of one element.
static Json ExpectedFields(const STEP& step) {
    const Json record = RecordJson(*step.info->record, BuildRecord(*step.info, step.resultFields));
    Json expected = Json::object();
    for (const FIELD_VALUE& each : step.resultFields) {
        const std::string_view name = each.field;
        const std::size_t bracket = name.find('[');
        const Json& value = record.at(std::string(name.substr(0, bracket)));
        expected[each.field] =
            value.is_array() ? value.at(ParseNumber<std::uint32_t>(
                                            name.substr(bracket + 1, name.size() - bracket - 2))
                                            .value())
                             : value;
    }
    return expected;
}

RECORDED_STEP RecordedStep(const STEP_OUTCOME& outcome) {
    const STEP& step = *outcome.step;
    RECORDED_STEP recorded;
    recorded.number = outcome.number;
    recorded.name = step.name;
    recorded.operation = step.info->name;
    recorded.verdict = VerdictOf(outcome.exitCode);
    recorded.problem = outcome.problem;
    recorded.expectedResult = step.result ? ResultText(*step.result) : "";
    recorded.expectedFields = ExpectedFields(step);
    recorded.startMs = outcome.startMs;
    recorded.timeMs = outcome.timeMs;
    for (const MEASUREMENT& each : outcome.measurements) {
        recorded.measurements.push_back(RecordedMeasurement(each));
    }
    recorded.attempts = outcome.attempts;
    return recorded;
}

VERDICT VerdictOf(EXIT_CODE exitCode) {
    switch (exitCode) {
        case EXIT_OK:
            return VERDICT::PASSED;
        case EXIT_OPERATION_FAILED:
        case EXIT_HOST_ERROR:
            return VERDICT::OPERATION_FAILED;
        case EXIT_INTERRUPTED:
            return VERDICT::ABORTED;
        default:
            return VERDICT::FAILED;
    }
}
