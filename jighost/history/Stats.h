// What many runs come to: yields, failures, and how measurements are spread. The database counts
// and adds up; memory stays the same however many there are.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "jighost/history/RunFilter.h"

/// Of one sequence. A body is judged by runs that passed, failed or met an error; those that were
/// aborted or not finished are counted alone.
struct RUN_STATS {
    std::string sequence;
    std::int64_t runs = 0;
    std::int64_t passed = 0;
    std::int64_t failed = 0;
    std::int64_t errors = 0;
    std::int64_t aborted = 0;
    std::int64_t unfinished = 0;
    std::int64_t bodies = 0;       ///< that were judged, by their serial numbers
    std::int64_t firstPassed = 0;  ///< bodies whose first run passed
    std::int64_t finalPassed = 0;  ///< bodies whose last run passed
};

/// Steps that failed or met an error.
struct STEP_FAILURES {
    std::string sequence;
    std::int64_t step = 0;  ///< its number
    std::string operation;
    std::string name;  ///< one of them: it may have values of the body in it
    std::int64_t count = 0;
};

struct DAY_MEAN {
    std::int64_t day = 0;  ///< since 1970
    std::int64_t count = 0;
    double mean = 0;
};

/// Of one measurement: by sequence, step's number, name, unit and limits. What there is no number
/// for is not there.
struct MEASUREMENT_STATS {
    std::string sequence;
    std::int64_t step = 0;
    std::string name;
    std::string unit;
    std::optional<double> min;
    std::optional<double> max;
    std::int64_t count = 0;    ///< of numbers
    std::int64_t outside = 0;  ///< numbers and texts that were not within their limits
    std::int64_t leftOut = 0;  ///< numbers of 1e150 or more, whose squares would be none
    std::optional<double> mean;
    std::optional<double> deviation;  ///< the standard deviation of a sample
    std::optional<double> least;
    std::optional<double> greatest;
    std::optional<double> cp;
    std::optional<double> cpk;
    std::optional<double> drift;  ///< a day, the slope of the line nearest to the days' means
    std::vector<DAY_MEAN> days;
};

struct HISTORY_STATS {
    std::vector<RUN_STATS> sequences;
    std::vector<STEP_FAILURES> steps;  ///< the most frequent ones first
    std::vector<MEASUREMENT_STATS> measurements;
};

HISTORY_STATS StatsOf(Database& database, const RUN_FILTER& filter);

/// The statement by which measurements are added up, which takes nearly all of the time.
std::string MeasurementStatement(const RUN_FILTER& filter);
