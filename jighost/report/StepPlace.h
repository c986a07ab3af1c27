// Where links of a page lead: places of steps and of their link calls.
#pragma once

#include <optional>
#include <string>

#include "jighost/records/RunRecord.h"

/// Of the step at `index` of the section `id`.
inline std::string StepPlace(const std::string& id, std::size_t index) {
    return id + "-step" + std::to_string(index + 1);
}

/// Of a call of the attempt at `attempt`, both counted from 0.
inline std::string CallPlace(const std::string& step, std::size_t attempt, std::size_t call) {
    return step + "-" + std::to_string(attempt + 1) + "-" + std::to_string(call + 1);
}

/// The first one that failed in the last attempt, which decides what a step comes to.
std::optional<std::size_t> FailedCall(const RECORDED_STEP& step);

/// The first step that is not as expected.
std::optional<std::size_t> FailedStep(const RUN_RECORD& record);
