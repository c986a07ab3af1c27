// What a page of many runs keeps of each: a record itself may be large.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "jighost/records/RunRecord.h"
#include "jighost/report/Markup.h"

/// A measurement that is a number.
struct REPORTED_VALUE {
    std::uint64_t step = 0;  ///< its number
    std::string name;
    std::string unit;
    double number = 0;
    std::optional<double> min;
    std::optional<double> max;
    bool bWithin = true;
};

struct REPORTED_RUN {
    std::string place;  ///< where links to it lead
    std::string number;
    std::string sequence;
    std::string serial;
    std::string station;
    std::string operatorName;
    std::string started;
    std::int64_t startedAt = 0;
    double timeMs = 0;
    VERDICT verdict = VERDICT::UNFINISHED;
    std::string problem;
    std::size_t steps = 0;
    std::vector<REPORTED_VALUE> values;
    Markup heading;
    Markup body;
};

REPORTED_RUN ReportedRun(const RUN_RECORD& record);

/// By their begin, the earliest first.
using ReportedRuns = std::vector<const REPORTED_RUN*>;
