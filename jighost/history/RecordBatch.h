// Files of records read ahead of their import, as many as go into one transaction.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "jighost/records/RunRecord.h"

struct FILED_RECORD {
    std::string path;  ///< absolute
    /// All texts without zero characters, which databases do not take; attempts, which are not
    /// kept, by their number alone.
    RUN_RECORD record;
};

struct RECORD_BATCH {
    std::vector<FILED_RECORD> records;
    std::vector<std::string> problems;  ///< one of each file that is spoilt
    std::size_t files = 0;              ///< how many were read
};

/// Reads the first of these files: so many that memory stays within bounds.
RECORD_BATCH ReadBatch(std::span<const std::string> paths);
