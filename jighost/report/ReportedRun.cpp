// A record's section is made at once, so that the record need not be kept.
#include "jighost/report/ReportedRun.h"

#include "jighost/report/RecordSection.h"
#include "jighost/report/Words.h"
#include "recorder/Sha256.h"

static std::vector<REPORTED_VALUE> ReportedValues(const RUN_RECORD& record) {
    std::vector<REPORTED_VALUE> values;
    for (const RECORDED_STEP& step : record.steps) {
        for (const RECORDED_MEASUREMENT& each : step.measurements) {
            if (each.number) {
                values.push_back(
                    {step.number, each.name, each.unit, *each.number, each.min, each.max,
                     each.bWithin});
            }
        }
    }
    return values;
}

/// A digest, since a number from a file may be any text.
static std::string PlaceOf(const RUN_RECORD& record) {
    return "run-" + Recorder::Sha256(record.number).substr(0, 12);
}

REPORTED_RUN ReportedRun(const RUN_RECORD& record) {
    const std::string place = PlaceOf(record);
    return {
        .place = place,
        .number = record.number,
        .sequence = record.sequence,
        .serial = SerialText(record),
        .station = record.station,
        .operatorName = record.operatorName,
        .started = StartText(record),
        .startedAt = record.startedAt,
        .timeMs = record.timeMs,
        .verdict = record.verdict,
        .problem = ProblemText(record),
        .steps = record.steps.size(),
        .values = ReportedValues(record),
        .heading = RecordHeading(record),
        .body = RecordBody(record, place),
    };
}
