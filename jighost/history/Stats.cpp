// Aggregates of the database, and the last steps of arithmetic.
#include "jighost/history/Stats.h"

#include <algorithm>
#include <cmath>

// --- Runs ---

static std::vector<RUN_STATS> CountRuns(Database& database, const RUN_FILTER& filter) {
    const auto count = [](const char* pszOutcome) {
        return std::string(", sum(CASE WHEN outcome = '") + pszOutcome + "' THEN 1 ELSE 0 END)";
    };
    RUN_STATS stats;
    Query query(
        database, "SELECT sequence, count(*)" + count("passed") + count("failed") + count("error") +
                      count("aborted") + count("unfinished") + " FROM run WHERE 1 = 1" +
                      filter.Condition() + " GROUP BY sequence ORDER BY sequence");
    filter.BindTo(query);
    query.Into(stats.sequence)
        .Into(stats.runs)
        .Into(stats.passed)
        .Into(stats.failed)
        .Into(stats.errors)
        .Into(stats.aborted)
        .Into(stats.unfinished);
    std::vector<RUN_STATS> all;
    while (query.Next()) {
        all.push_back(stats);
    }
    return all;
}

static void AddYields(
    Database& database, const RUN_FILTER& filter, std::vector<RUN_STATS>& sequences) {
    const auto ordered = [](const char* pszOrder, const char* pszName) {
        return std::string(
                   ", row_number() OVER (PARTITION BY sequence, serial ORDER BY started_at") +
               pszOrder + ", id" + pszOrder + ") AS " + pszName;
    };
    Query query(
        database,
        "SELECT sequence, sum(CASE WHEN nth = 1 THEN 1 ELSE 0 END), sum(CASE WHEN nth = 1 AND "
        "outcome = 'passed' THEN 1 ELSE 0 "
        "END),"
        " sum(CASE WHEN nth_last = 1 AND outcome = 'passed' THEN 1 ELSE 0 END)"
        " FROM (SELECT sequence, outcome" +
            ordered("", "nth") + ordered(" DESC", "nth_last") +
            " FROM run WHERE serial IS NOT NULL AND outcome IN ('passed', 'failed', 'error')" +
            filter.Condition() + ") AS judged WHERE nth = 1 OR nth_last = 1 GROUP BY sequence");
    RUN_STATS yield;
    filter.BindTo(query);
    query.Into(yield.sequence).Into(yield.bodies).Into(yield.firstPassed).Into(yield.finalPassed);
    while (query.Next()) {
        const auto found = std::ranges::find(sequences, yield.sequence, &RUN_STATS::sequence);
        if (found != sequences.end()) {
            found->bodies = yield.bodies;
            found->firstPassed = yield.firstPassed;
            found->finalPassed = yield.finalPassed;
        }
    }
}

static std::vector<STEP_FAILURES> CountFailures(Database& database, const RUN_FILTER& filter) {
    STEP_FAILURES failures;
    Query query(
        database,
        "SELECT run.sequence, step.number, step.operation, min(step.name), count(*) AS failures"
        " FROM step JOIN run ON run.id = step.run WHERE step.outcome IN ('failed', 'error')" +
            filter.Condition() +
            " GROUP BY run.sequence, step.number, step.operation"
            " ORDER BY failures DESC, run.sequence, step.number, step.operation");
    filter.BindTo(query);
    query.Into(failures.sequence)
        .Into(failures.step)
        .Into(failures.operation)
        .Into(failures.name)
        .Into(failures.count);
    std::vector<STEP_FAILURES> all;
    while (query.Next()) {
        all.push_back(failures);
    }
    return all;
}

// --- Measurements ---

// Twice over all of them: deviations are taken from the mean, so that what values have in common,
// such as 1000000000 of 1000000001, takes no digits from their squares.
std::string MeasurementStatement(const RUN_FILTER& filter) {
    return "WITH central AS (SELECT measurement.quantity, avg(measurement.value) AS mean"
           " FROM measurement JOIN run ON run.id = measurement.run"
           " WHERE abs(measurement.value) < 1e150" +
           filter.Condition() +
           " GROUP BY measurement.quantity),"
           " sums AS (SELECT measurement.quantity, run.day, mean, count(*) AS measured,"
           " count(value) AS numbers, sum(within) AS inside,"
           " sum(CASE WHEN abs(value) < 1e150 THEN 1 ELSE 0 END) AS usable,"
           " sum(CASE WHEN abs(value) < 1e150 THEN value - mean END) AS deviations,"
           " sum(CASE WHEN abs(value) < 1e150 THEN (value - mean) * (value - mean) END) AS squares,"
           " min(CASE WHEN abs(value) < 1e150 THEN value END) AS lowest,"
           " max(CASE WHEN abs(value) < 1e150 THEN value END) AS highest"
           " FROM measurement JOIN run ON run.id = measurement.run"
           " LEFT JOIN central ON central.quantity = measurement.quantity WHERE 1 = 1" +
           filter.Condition() +
           " GROUP BY measurement.quantity, mean, run.day)"
           " SELECT id, sequence, step, name, unit, least, greatest, day, mean, usable,"
           " measured - inside, numbers - usable, deviations, squares, lowest, highest"
           " FROM sums JOIN quantity ON quantity.id = sums.quantity"
           " ORDER BY sequence, step, name, unit, id, day";
}

namespace {

/// One row: a measurement's values of one day.
struct DAY_SUMS {
    std::int64_t quantity = 0;
    MEASUREMENT_STATS named;  ///< with least, greatest and counts of the day
    std::optional<std::int64_t> day;
    double mean = 0;  ///< of all days
    double deviations = 0;
    double squares = 0;
};

/// Days of one measurement made into its statistics.
class Measured {
  public:
    void Add(const DAY_SUMS& day) {
        if (m_Stats.empty() || m_nQuantity != day.quantity) {
            Finish();
            m_Stats.push_back(day.named);
            m_Stats.back().count = m_Stats.back().outside = m_Stats.back().leftOut = 0;
            m_nQuantity = day.quantity;
            m_Mean = day.mean;
        }
        MEASUREMENT_STATS& stats = m_Stats.back();
        stats.count += day.named.count;
        stats.outside += day.named.outside;
        stats.leftOut += day.named.leftOut;
        if (day.named.count > 0) {
            AddNumbers(stats, day);
        }
    }
    std::vector<MEASUREMENT_STATS> All() {
        Finish();
        return std::move(m_Stats);
    }

  private:
    void AddNumbers(MEASUREMENT_STATS& stats, const DAY_SUMS& day) {
        m_Deviations += day.deviations;
        m_Squares += day.squares;
        stats.least = std::min(stats.least.value_or(*day.named.least), *day.named.least);
        stats.greatest =
            std::max(stats.greatest.value_or(*day.named.greatest), *day.named.greatest);
        if (day.day) {
            const auto count = static_cast<double>(day.named.count);
            stats.days.push_back({*day.day, day.named.count, m_Mean + day.deviations / count});
        }
    }

    void Finish() {
        if (!m_Stats.empty() && m_Stats.back().count > 0) {
            MEASUREMENT_STATS& stats = m_Stats.back();
            const auto count = static_cast<double>(stats.count);
            stats.mean = m_Mean + m_Deviations / count;
            if (stats.count > 1) {
                const double squares = m_Squares - m_Deviations * m_Deviations / count;
                stats.deviation = std::sqrt(std::max(squares, 0.0) / (count - 1));
            }
            AddCapability(stats);
            AddDrift(stats);
        }
        m_Deviations = m_Squares = 0;
    }

    static void AddCapability(MEASUREMENT_STATS& stats) {
        if (stats.deviation.value_or(0) == 0) {
            return;
        }
        const double spread = 3 * *stats.deviation;
        if (stats.min) {
            stats.cpk = (*stats.mean - *stats.min) / spread;
        }
        if (stats.max) {
            const double above = (*stats.max - *stats.mean) / spread;
            stats.cpk = std::min(stats.cpk.value_or(above), above);
        }
        if (stats.min && stats.max) {
            stats.cp = (*stats.max - *stats.min) / (2 * spread);
        }
    }

    void AddDrift(MEASUREMENT_STATS& stats) const {
        const auto count = static_cast<double>(stats.days.size());
        double meanDay = 0;
        for (const DAY_MEAN& day : stats.days) {
            meanDay += static_cast<double>(day.day) / count;
        }
        double products = 0;
        double squares = 0;
        for (const DAY_MEAN& day : stats.days) {
            const double distance = static_cast<double>(day.day) - meanDay;
            products += distance * (day.mean - m_Mean);
            squares += distance * distance;
        }
        if (stats.days.size() > 1) {
            stats.drift = products / squares;
        }
    }

    std::vector<MEASUREMENT_STATS> m_Stats;
    // Of the last one.
    std::int64_t m_nQuantity = 0;
    double m_Mean = 0;  // as the database has it: deviations are from it
    double m_Deviations = 0;
    double m_Squares = 0;
};

}  // namespace

static std::vector<MEASUREMENT_STATS> MeasurementStats(
    Database& database, const RUN_FILTER& filter) {
    DAY_SUMS row;
    Query query(database, MeasurementStatement(filter));
    filter.BindTo(query);
    query.Into(row.quantity)
        .Into(row.named.sequence)
        .Into(row.named.step)
        .Into(row.named.name)
        .Into(row.named.unit)
        .Into(row.named.min)
        .Into(row.named.max)
        .Into(row.day)
        .Into(row.mean)
        .Into(row.named.count)
        .Into(row.named.outside)
        .Into(row.named.leftOut)
        .Into(row.deviations)
        .Into(row.squares)
        .Into(row.named.least)
        .Into(row.named.greatest);
    Measured measured;
    while (query.Next()) {
        measured.Add(row);
    }
    return measured.All();
}

HISTORY_STATS StatsOf(Database& database, const RUN_FILTER& filter) {
    const Transaction transaction(database, Transaction::READ);
    HISTORY_STATS stats;
    stats.sequences = CountRuns(database, filter);
    AddYields(database, filter, stats.sequences);
    stats.steps = CountFailures(database, filter);
    stats.measurements = MeasurementStats(database, filter);
    return stats;
}
