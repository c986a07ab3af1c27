// What a reader looks for first.
#include "jighost/report/StepPlace.h"

#include <algorithm>

/// The place of the first element for which `is` holds.
template <class Elements, class Condition>
static std::optional<std::size_t> FirstPlace(const Elements& elements, const Condition& is) {
    const auto found = std::find_if(elements.begin(), elements.end(), is);
    return found == elements.end()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(found - elements.begin()));
}

std::optional<std::size_t> FailedCall(const RECORDED_STEP& step) {
    if (step.attempts.empty()) {
        return std::nullopt;
    }
    return FirstPlace(
        step.attempts.back().calls, [](const RECORDED_CALL& call) { return call.bFailed; });
}

std::optional<std::size_t> FailedStep(const RUN_RECORD& record) {
    return FirstPlace(
        record.steps, [](const RECORDED_STEP& step) { return step.verdict != VERDICT::PASSED; });
}
