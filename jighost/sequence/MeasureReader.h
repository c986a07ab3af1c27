// The measurements of a step in a sequence's file.
#pragma once

#include <vector>

#include "jighost/operations/OperationTable.h"
#include "jighost/sequence/FilledText.h"
#include "jighost/sequence/Measure.h"

/// Of the list measure: of a step with this operation. Throws EXIT_WRONG_USE with the line of what
/// is wrong.
std::vector<MEASURE> ReadMeasures(
    const FilledText& texts, const OPERATION_INFO& info, const YAML::Node& node);
