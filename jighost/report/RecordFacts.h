// Where, on what and by what a run took place.
#pragma once

#include "jighost/records/RunRecord.h"
#include "jighost/report/Markup.h"

/// What people ask for first: station, operator, steps, parameters, faults.
Markup MainFacts(const RUN_RECORD& record);

/// Files with their digests, the body's ID, the record's number.
Markup FurtherFacts(const RUN_RECORD& record);
