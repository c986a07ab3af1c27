// Records of runs as `jighost sequence` files them, for tests of what is made of many.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "jighost/records/RunRecord.h"
#include "tests/support/Support.h"

/// Midnight, the beginning of 23 November 2026 in UTC, in milliseconds since 1970.
constexpr std::int64_t FIRST_DAY = 1'795'392'000'000;
constexpr std::int64_t ONE_DAY = 86'400'000;

/// The number of a record.
inline std::string SampleNumber(unsigned unNumber) {
    const std::string digits = std::to_string(unNumber);
    return "c0ffee00-0000-4000-8000-" + std::string(12 - digits.size(), '0') + digits;
}

/// A run of one step, "Tilt" by number 1, in which "tilt" was measured in pixels from -2 to 2.
inline RUN_RECORD SampleRun(
    unsigned unNumber, std::uint32_t serial, VERDICT verdict, double tilt,
    std::int64_t startedAt = FIRST_DAY) {
    RECORDED_MEASUREMENT measurement;
    measurement.name = "tilt";
    measurement.unit = "pixels";
    measurement.number = tilt;
    measurement.min = -2;
    measurement.max = 2;
    measurement.bJudged = true;
    measurement.bWithin = tilt >= -2 && tilt <= 2;
    RECORDED_STEP step;
    step.number = 1;
    step.name = "Tilt";
    step.operation = "GetTilt";
    step.verdict = verdict == VERDICT::UNFINISHED ? VERDICT::PASSED : verdict;
    step.measurements = {measurement};
    step.attempts.resize(2);
    RUN_RECORD run;
    run.number = SampleNumber(unNumber);
    run.startedAt = startedAt;
    run.station = "line 4";
    run.serial = serial;
    run.sequence = "adjust";
    run.verdict = verdict;
    run.steps = {step};
    return run;
}

inline std::string WriteRecord(const std::string& path, const RUN_RECORD& run) {
    WriteFile(path, JsonText(RunRecordJson(run), ON_ONE_LINE) + '\n');
    return path;
}

/// Files "1.json" and so on, of numbers from 1 on; their names, each behind a blank.
inline std::string WriteRecords(unsigned unCount) {
    std::string names;
    for (unsigned i = 1; i <= unCount; ++i) {
        names +=
            ' ' + WriteRecord(std::to_string(i) + ".json", SampleRun(i, i, VERDICT::PASSED, 1));
    }
    return names;
}
