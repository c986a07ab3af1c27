// Measurements are matched by their steps' numbers and their names.
#include "jighost/history/Comparison.h"

#include <algorithm>
#include <map>

#include "jighost/records/RunRecord.h"
#include "jighost/text/HostError.h"

std::optional<double> MEASURED_PAIR::Difference() const {
    const bool bNumbers = left && right && left->unit == right->unit && left->value && right->value;
    return bNumbers ? std::optional(*right->value - *left->value) : std::nullopt;
}

/// By sequence.
static std::map<std::string, STORED_RUN> LastRuns(Database& database, std::uint32_t serial) {
    std::map<std::string, STORED_RUN> runs;
    RUN_FILTER filter;
    filter.serial = serial;
    EachRun(database, filter, [&](const STORED_RUN& run) {
        if (run.outcome != VerdictName(VERDICT::ABORTED) &&
            run.outcome != VerdictName(VERDICT::UNFINISHED)) {
            runs[run.sequence] = run;
        }
    });
    return runs;
}

static std::vector<MEASURED_PAIR> PairsOf(
    const std::vector<STORED_MEASUREMENT>& left, const std::vector<STORED_MEASUREMENT>& right) {
    std::vector<MEASURED_PAIR> pairs;
    pairs.reserve(left.size() + right.size());
    for (const STORED_MEASUREMENT& each : left) {
        pairs.push_back({each, std::nullopt});
    }
    for (const STORED_MEASUREMENT& each : right) {
        const auto same = std::ranges::find_if(pairs, [&](const MEASURED_PAIR& pair) {
            return pair.left && !pair.right && pair.left->number == each.number &&
                   pair.left->name == each.name;
        });
        same == pairs.end() ? void(pairs.push_back({std::nullopt, each}))
                            : void(same->right = each);
    }
    return pairs;
}

std::vector<COMPARED_RUNS> CompareBodies(
    Database& database, std::uint32_t left, std::uint32_t right) {
    const Transaction transaction(database, Transaction::READ);
    const auto rightRuns = LastRuns(database, right);
    std::vector<COMPARED_RUNS> compared;
    for (const auto& [sequence, run] : LastRuns(database, left)) {
        const auto other = rightRuns.find(sequence);
        if (other != rightRuns.end()) {
            compared.push_back(
                {run, other->second,
                 PairsOf(MeasurementsOf(database, run), MeasurementsOf(database, other->second))});
        }
    }
    if (compared.empty()) {
        throw HostError(
            EXIT_UNEXPECTED, "there is no sequence in " + database.Name() + " that both body " +
                                 std::to_string(left) + " and body " + std::to_string(right) +
                                 " have run to its end");
    }
    return compared;
}
