// All that the steps of a run measured.
#pragma once

#include "jighost/records/RunRecord.h"
#include "jighost/report/Markup.h"

/// `id` is the section's; rows lead to its steps. Nothing of a run that measured nothing.
Markup MeasurementTable(const RUN_RECORD& record, const std::string& id);
