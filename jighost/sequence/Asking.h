// A step that asks a person instead of running an operation. The answer is a measurement. In a
// sequence's file:
//
//     - ask: Is the lens cap on?
//       name: lens cap
//     - ask: Which lamp is lit?
//       answer: number            # or text; without it yes or no, of which yes is as expected
//       min: 1
//       max: 3
#pragma once

#include <string>

#include "jighost/operations/OperationTable.h"
#include "jighost/sequence/Measure.h"

enum class ANSWER_KIND { YES_OR_NO, NUMBER, TEXT };

struct ASKING {
    std::string text;
    ANSWER_KIND answer = ANSWER_KIND::YES_OR_NO;
    MEASURE measure;  ///< of the answer; it has no field
};

/// Stands in the place of an operation; it has an empty record.
extern const OPERATION_INFO ASK_OPERATION;

/// An answer as a measurement; throws EXIT_WRONG_USE for one that is not of its kind. The asking
/// must outlive it.
MEASUREMENT MeasuredAnswer(const ASKING& asking, const std::string& answer);
