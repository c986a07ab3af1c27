// Rows read back.
#include "jighost/history/Runs.h"

#include <limits>

static const char SELECT_RUN[] =
    "SELECT id, number, started_at, started, time_ms, station, operator, serial,"
    " sequence, sequence_sha256, outcome, problem, path FROM run WHERE ";

static void BindRun(Query& query, STORED_RUN& run) {
    query.Into(run.id)
        .Into(run.number)
        .Into(run.startedAt)
        .Into(run.started)
        .Into(run.timeMs)
        .Into(run.station)
        .Into(run.operatorName)
        .Into(run.serial)
        .Into(run.sequence)
        .Into(run.sequenceHash)
        .Into(run.outcome)
        .Into(run.problem)
        .Into(run.path);
}

// A server's library holds all rows of an answer, so that one has this many at most.
static constexpr std::int64_t ROWS_AT_ONCE = 1000;

void EachRun(
    Database& database, const RUN_FILTER& filter,
    const std::function<void(const STORED_RUN&)>& take) {
    const std::string statement = SELECT_RUN +
                                  ("(started_at, id) > (:last_at, :last)" + filter.Condition()) +
                                  " ORDER BY started_at, id LIMIT :rows";
    STORED_RUN run;
    run.startedAt = std::numeric_limits<std::int64_t>::min();
    for (std::int64_t nRows = ROWS_AT_ONCE; nRows == ROWS_AT_ONCE;) {
        Query query(database, statement);
        query.With("last_at", run.startedAt).With("last", run.id).With("rows", ROWS_AT_ONCE);
        filter.BindTo(query);
        BindRun(query, run);
        for (nRows = 0; query.Next(); ++nRows) {
            take(run);
        }
    }
}

std::optional<STORED_RUN> FindRun(Database& database, const std::string& number) {
    STORED_RUN run;
    Query query(database, std::string(SELECT_RUN) + "number = :number");
    query.With("number", number);
    BindRun(query, run);
    return query.Next() ? std::optional(run) : std::nullopt;
}

/// All rows that the query has into one variable.
template <class Row>
static std::vector<Row> RowsOf(Query& query, Row& row) {
    std::vector<Row> rows;
    while (query.Next()) {
        rows.push_back(row);
    }
    return rows;
}

std::vector<STORED_STEP> StepsOf(Database& database, const STORED_RUN& run) {
    STORED_STEP step;
    Query query(
        database,
        "SELECT place, number, name, operation, outcome, problem, time_ms, attempts"
        " FROM step WHERE run = :run ORDER BY place");
    query.With("run", run.id)
        .Into(step.place)
        .Into(step.number)
        .Into(step.name)
        .Into(step.operation)
        .Into(step.outcome)
        .Into(step.problem)
        .Into(step.timeMs)
        .Into(step.attempts);
    return RowsOf(query, step);
}

std::vector<STORED_MEASUREMENT> MeasurementsOf(Database& database, const STORED_RUN& run) {
    STORED_MEASUREMENT measurement;
    Query query(
        database,
        "SELECT measurement.step, quantity.step, name, unit, text, value, least,"
        " greatest, judged, within"
        " FROM measurement JOIN quantity ON quantity.id = measurement.quantity"
        " WHERE run = :run ORDER BY measurement.step, place");
    query.With("run", run.id)
        .Into(measurement.step)
        .Into(measurement.number)
        .Into(measurement.name)
        .Into(measurement.unit)
        .Into(measurement.text)
        .Into(measurement.value)
        .Into(measurement.min)
        .Into(measurement.max)
        .Into(measurement.bJudged)
        .Into(measurement.bWithin);
    return RowsOf(query, measurement);
}
