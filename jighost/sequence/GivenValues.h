// The values that a person gives for the parameters of a sequence, for one run or for many.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "jighost/sequence/Parameter.h"

struct GIVEN_VALUES {
    std::vector<std::string> settings;  ///< from --set, "NAME=VALUE", for each run
    std::string tablePath;              ///< from --table, a run for each row; empty without
};

struct RUN_VALUES {
    VALUES values;
    std::string place;  ///< "FILE:LINE" of its row; empty without a table
};

/// Gives what a person answers, which CheckValue takes, or nothing where nobody can be asked.
using ValueAsker = std::function<std::optional<std::string>(const PARAMETER& parameter)>;

/// The values of each run, in their order: those given, then defaults, then those asked for. Throws
/// EXIT_WRONG_USE with a line for each value that is wrong or missing.
std::vector<RUN_VALUES> CollectValues(
    const std::vector<PARAMETER>& parameters, const GIVEN_VALUES& given, const ValueAsker& ask);
