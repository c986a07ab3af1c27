// One step of a sequence's file.
#pragma once

#include "jighost/sequence/FilledText.h"
#include "jighost/sequence/SequenceFile.h"

/// Throws EXIT_WRONG_USE with the line of what is wrong. Where a value is not known yet, what
/// depends on it is neither checked nor in the step.
STEP ReadStep(const FilledText& texts, const YAML::Node& node);
