// Which runs of a history are meant.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "jighost/history/Database.h"

/// What is empty does not choose.
struct RUN_FILTER {
    std::optional<std::uint32_t> serial;
    std::string station;
    std::string sequence;
    std::string outcome;                ///< as VerdictName gives it
    std::optional<std::int64_t> since;  ///< days since 1970, by the calendar of the run's station
    std::optional<std::int64_t> until;  ///< the last one

    /// For a statement in which the table of runs is "run": "" or " AND ...".
    std::string Condition() const;
    /// Binds what Condition names.
    void BindTo(Query& query) const;
};

/// Throws EXIT_WRONG_USE with the option's name for a text that is no YYYY-MM-DD.
std::int64_t ParseDay(const std::string& option, const std::string& text);
