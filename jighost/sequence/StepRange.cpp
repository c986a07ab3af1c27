// Steps found by number, or by name.
#include "jighost/sequence/StepRange.h"

#include <algorithm>

#include "jighost/text/HostError.h"
#include "jighost/text/Numbers.h"

/// The place of a step by number, or by name at or behind `start`.
static std::size_t FindStep(const SEQUENCE& sequence, const std::string& text, std::size_t start) {
    const auto number = ParseNumber<std::size_t>(text);
    if (number && *number >= 1 && *number <= sequence.steps.size()) {
        return *number - 1;
    }
    for (std::size_t i = start; i < sequence.steps.size(); ++i) {
        if (sequence.steps[i].name == text) {
            return i;
        }
    }
    throw HostError(
        EXIT_WRONG_USE, "expected a step by its name or by a number from 1 to " +
                            std::to_string(sequence.steps.size()) + ", got '" + text + "'");
}

STEP_RANGE FindRange(const SEQUENCE& sequence, const std::string& from, const std::string& until) {
    STEP_RANGE range = {0, sequence.steps.size() - 1};
    if (!from.empty()) {
        range.first = FindStep(sequence, from, 0);
    }
    if (!until.empty()) {
        range.last = FindStep(sequence, until, range.first);
    }
    if (range.last < range.first) {
        throw HostError(EXIT_WRONG_USE, "step " + until + " comes ahead of step " + from);
    }
    return range;
}

bool HasDump(const SEQUENCE& sequence, const STEP_RANGE& range) {
    const auto isDump = [](const STEP& step) { return IsDump(*step.info); };
    const auto first = sequence.steps.begin() + static_cast<std::ptrdiff_t>(range.first);
    const auto end = sequence.steps.begin() + static_cast<std::ptrdiff_t>(range.last) + 1;
    return std::any_of(first, end, isDump) ||
           std::any_of(sequence.always.begin(), sequence.always.end(), isDump);
}
