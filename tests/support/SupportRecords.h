// Records of runs, for tests of what reads, writes and shows them.
#pragma once

#include "jighost/records/RunRecord.h"

/// Step 3, whose operation failed by its only call and then did not return; of its two measurements
/// the first is not within.
RECORDED_STEP SampleStep();

/// Steps 2 to 3 of 9 were asked for; the only one that ran is the sample's.
RUN_RECORD SampleRecord();
