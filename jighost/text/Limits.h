// Between which numbers a value has to be.
#pragma once

#include <optional>
#include <string>

struct LIMITS {
    std::optional<double> min;
    std::optional<double> max;

    bool IsEmpty() const { return !min && !max; }
    /// Both limits are within. What is no number is not, unless there are none.
    bool Hold(double number) const { return (!min || number >= *min) && (!max || number <= *max); }
};

/// "from 1 to 9", "at least 1", "at most 9"; empty without limits.
std::string LimitsText(const LIMITS& limits);
