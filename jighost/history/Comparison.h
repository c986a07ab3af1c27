// Two bodies side by side, by the last run of each in each sequence.
#pragma once

#include <vector>

#include "jighost/history/Runs.h"

/// A measurement that at least one of the two has.
struct MEASURED_PAIR {
    std::optional<STORED_MEASUREMENT> left;
    std::optional<STORED_MEASUREMENT> right;

    const STORED_MEASUREMENT& Any() const { return left ? *left : *right; }
    /// Right less left, of numbers of one unit.
    std::optional<double> Difference() const;
};

struct COMPARED_RUNS {
    STORED_RUN left;
    STORED_RUN right;
    std::vector<MEASURED_PAIR> measurements;  ///< as the left one has them, then the right one
};

/// Each sequence that both bodies have run, by its last run that was neither aborted nor
/// unfinished. Throws EXIT_UNEXPECTED if there is none.
std::vector<COMPARED_RUNS> CompareBodies(
    Database& database, std::uint32_t left, std::uint32_t right);
