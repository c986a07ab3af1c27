// What a sequence is given for each run, such as a body's serial number. In its file:
//
//     parameters:
//       serial:
//         type: unsigned 32 bits     # as `jighost list OPERATION` has the types of fields
//         min: 1                     # of a number; of characters and bytes how many there are
//         max: 99999999
//         default: 1                 # without it, a run must be given a value
//         question: Serial number on the label?
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "jighost/operations/Record.h"
#include "jighost/text/Limits.h"

struct PARAMETER {
    std::string name;
    FIELD_KIND kind = FIELD_KIND::UNSIGNED;
    LIMITS limits;
    std::optional<std::string> defaultValue;
    std::string question;  ///< asked on a terminal; empty for the name alone
};

/// The value of each parameter; none where it is not known yet.
using VALUES = std::map<std::string, std::optional<std::string>>;

/// Throws EXIT_WRONG_USE, with the nearest names, for a name that is none.
const PARAMETER& FindParameter(const std::vector<PARAMETER>& parameters, const std::string& name);

/// Throws EXIT_WRONG_USE for a value that is not of the parameter's type or beyond its limits.
void CheckValue(const PARAMETER& parameter, const std::string& value);

/// Whether a text may be a parameter's name: letters, digits and _, and no digit ahead.
bool IsParameterName(const std::string& text);

/// The value of each parameter that has a default; none for the others.
VALUES DefaultValues(const std::vector<PARAMETER>& parameters);
