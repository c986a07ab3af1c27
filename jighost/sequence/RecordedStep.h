// What a step came to, as the record of the run has it.
#pragma once

#include "jighost/sequence/SequenceRun.h"

RECORDED_STEP RecordedStep(const STEP_OUTCOME& outcome);

/// Of a step, or of a run, that came to this exit code.
VERDICT VerdictOf(EXIT_CODE exitCode);
