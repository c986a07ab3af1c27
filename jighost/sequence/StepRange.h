// The part of a sequence that is to run.
#pragma once

#include <string>

#include "jighost/sequence/SequenceFile.h"

/// Steps `first` to `last`, counted from 0.
struct STEP_RANGE {
    std::size_t first;
    std::size_t last;
};

/// Whether a step of the range, or of always:, dumps the adjustment data.
bool HasDump(const SEQUENCE& sequence, const STEP_RANGE& range);

/// From one step until another, each given by its number or name; an empty text stands for the
/// first and the last one. Throws EXIT_WRONG_USE for a step that is none, or ahead of the first.
STEP_RANGE FindRange(const SEQUENCE& sequence, const std::string& from, const std::string& until);
