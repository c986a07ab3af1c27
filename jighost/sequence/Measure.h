// What a step measures: values of fields that come back, with limits. In a sequence's file:
//
//     measure:
//       - {field: DeltaX, name: tilt, unit: pixels, min: -2, max: 2}
//       - {field: DeltaY, value: 2, tolerance: 0.5}
//       - {field: OwnerName, pattern: "Line [0-9]+"}      # the whole text, as it is shown
//       - {field: Version}                                # kept, and held against nothing
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "jighost/operations/Record.h"
#include "jighost/text/Limits.h"

struct MEASURE {
    std::string field;
    std::string name;  ///< else the field's
    std::string unit;
    LIMITS limits;        ///< of a number
    std::string pattern;  ///< of characters or bytes; empty for any

    bool IsJudged() const { return !limits.IsEmpty() || !pattern.empty(); }
};

struct MEASUREMENT {
    const MEASURE* measure = nullptr;
    std::string text;              ///< as people read it, without the unit
    std::optional<double> number;  ///< none of characters and bytes
    bool bWithin = true;           ///< also of what is held against nothing
};

/// All of them, taken from a record.
std::vector<MEASUREMENT> Measured(
    const std::vector<MEASURE>& measures, const RECORD& form, const RecordBytes& record);

/// Such as "tilt: 1 pixels (from -2 to 2), passed".
std::string MeasurementText(const MEASUREMENT& measurement);

/// Such as "tilt: expected from -2 to 2 pixels, got 3 pixels".
std::string MeasurementProblem(const MEASUREMENT& measurement);
