// Runs as a history has them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "jighost/history/RunFilter.h"

struct STORED_RUN {
    std::int64_t id = 0;
    std::string number;  ///< of its record
    std::int64_t startedAt = 0;
    std::string started;  ///< empty if unknown
    double timeMs = 0;
    std::string station;
    std::string operatorName;
    std::optional<std::int64_t> serial;
    std::string sequence;
    std::string sequenceHash;
    std::string outcome;
    std::string problem;
    std::string path;  ///< where the record was imported from
};

struct STORED_STEP {
    std::int64_t place = 0;
    std::int64_t number = 0;
    std::string name;
    std::string operation;
    std::string outcome;
    std::string problem;
    double timeMs = 0;
    std::int64_t attempts = 0;
};

struct STORED_MEASUREMENT {
    std::int64_t step = 0;    ///< its place
    std::int64_t number = 0;  ///< of the step
    std::string name;
    std::string unit;
    std::string text;
    std::optional<double> value;
    std::optional<double> min;
    std::optional<double> max;
    bool bJudged = false;
    bool bWithin = false;
};

/// From the oldest to the newest, however many there are.
void EachRun(
    Database& database, const RUN_FILTER& filter,
    const std::function<void(const STORED_RUN&)>& take);
/// Nothing if there is none of this number.
std::optional<STORED_RUN> FindRun(Database& database, const std::string& number);

std::vector<STORED_STEP> StepsOf(Database& database, const STORED_RUN& run);
std::vector<STORED_MEASUREMENT> MeasurementsOf(Database& database, const STORED_RUN& run);
