// One run of a step's operation: result, record, link calls and log lines.
#pragma once

#include <string>

#include "jighost/records/RunRecord.h"
#include "jighost/report/Markup.h"

/// The attempt at `index`, counted from 0, of a step at `place`.
Markup AttemptDetails(const RECORDED_STEP& step, std::size_t index, const std::string& place);
