// A step, which unfolds to its attempts with their fields, link calls and log lines.
#pragma once

#include <string>

#include "jighost/records/RunRecord.h"
#include "jighost/report/Timeline.h"

/// Open if the step is not as expected. `place` is the step's own.
Markup StepDetails(const RECORDED_STEP& step, const std::string& place, const Timeline& timeline);
