// Files of records read ahead of their import, as many as go into one transaction.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "jighost/history/RecordRows.h"

/// How much a record tells of its run.
struct RUN_PROGRESS {
    bool bUnfinished;
    std::int64_t steps;

    bool IsAheadOf(const RUN_PROGRESS& other) const {
        return other.bUnfinished && (!bUnfinished || steps > other.steps);
    }
};

struct BATCH_RECORD {
    std::string number;
    RUN_PROGRESS progress;
};

struct RECORD_BATCH {
    std::vector<BATCH_RECORD> records;
    /// Theirs, in the same order. All texts are without zero characters, which databases do not
    /// take.
    RecordRows rows;
    std::vector<std::string> problems;  ///< one of each file that is spoilt
    std::size_t files = 0;              ///< how many were read
};

/// Reads the first of these files: so many that memory stays within bounds.
RECORD_BATCH ReadBatch(std::span<const std::string> paths);
