// Records of runs taken into a history.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "jighost/history/Database.h"

struct IMPORT_COUNTS {
    std::size_t imported = 0;
    std::size_t known = 0;   ///< imported before, or named twice
    std::size_t spoilt = 0;  ///< left out
};

/// Takes the files in, many in each transaction: of each file all or nothing, and nothing twice.
/// `complain` gets a line for each file that is spoilt. A signal ends it behind what is read.
IMPORT_COUNTS ImportRecords(
    Database& database, const std::vector<std::string>& paths,
    const std::function<void(const std::string&)>& complain);
