// One run on a page: what it came to and why, its facts, measurements and steps.
#pragma once

#include <string>

#include "jighost/records/RunRecord.h"
#include "jighost/report/Markup.h"

/// What stands ahead of the facts: outcome, sequence, body, moment.
Markup RecordHeading(const RUN_RECORD& record);

/// All behind the heading. Places within begin with `id`.
Markup RecordBody(const RUN_RECORD& record, const std::string& id);

/// In a few words what was not as expected, such as "step 3, lens tilt: expected ..."; or nothing.
std::string ProblemText(const RUN_RECORD& record);
