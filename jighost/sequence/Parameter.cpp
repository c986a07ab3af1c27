// A value is held against a record with one field, the parameter.
#include "jighost/sequence/Parameter.h"

#include <algorithm>
#include <iterator>

#include "jighost/text/HostError.h"
#include "jighost/text/NearestName.h"
#include "trace/Hex.h"

static const std::size_t LONGEST_NAME = 60;
static const std::uint32_t LONGEST_VALUE = 1000;  // characters or bytes

/// A number, or how many characters or bytes there are.
static double Quantity(const RECORD& record, const RecordBytes& bytes, const std::string& value) {
    const char* pszName = record.fields.front().name;
    if (const auto number = FieldNumber(record, bytes, pszName)) {
        return *number;
    }
    const bool bText = record.fields.front().kind == FIELD_KIND::TEXT;
    return static_cast<double>(bText ? value.size() : ParseHex(value)->size());
}

void CheckValue(const PARAMETER& parameter, const std::string& value) {
    const bool bCounted = parameter.kind == FIELD_KIND::TEXT || parameter.kind == FIELD_KIND::BYTES;
    const FIELD field = {
        parameter.name.c_str(), 0, bCounted ? LONGEST_VALUE : std::uint32_t{sizeof(double)},
        parameter.kind, ""};
    const RECORD record = {"", LONGEST_VALUE, {&field, 1}};
    RecordBytes bytes(record.size);
    SetField("parameter", record, bytes, parameter.name, value);
    if (!parameter.limits.Hold(Quantity(record, bytes, value))) {
        const char* pszCounted = parameter.kind == FIELD_KIND::TEXT ? " characters" : " bytes";
        throw HostError(
            EXIT_WRONG_USE, "parameter: " + parameter.name + ": expected " +
                                LimitsText(parameter.limits) + (bCounted ? pszCounted : "") +
                                ", got '" + value + "'");
    }
}

const PARAMETER& FindParameter(const std::vector<PARAMETER>& parameters, const std::string& name) {
    const auto found = std::find_if(
        parameters.begin(), parameters.end(),
        [&](const PARAMETER& each) { return each.name == name; });
    if (found == parameters.end()) {
        std::vector<std::string> names;
        std::transform(
            parameters.begin(), parameters.end(), std::back_inserter(names),
            [](const PARAMETER& each) { return each.name; });
        throw HostError(
            EXIT_WRONG_USE,
            "the sequence has no parameter '" + name + "'" + NearestNames(name, names));
    }
    return *found;
}

bool IsParameterName(const std::string& text) {
    const auto isPart = [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
               (character >= '0' && character <= '9') || character == '_';
    };
    return !text.empty() && text.size() <= LONGEST_NAME && (text[0] < '0' || text[0] > '9') &&
           std::all_of(text.begin(), text.end(), isPart);
}

VALUES DefaultValues(const std::vector<PARAMETER>& parameters) {
    VALUES values;
    for (const PARAMETER& each : parameters) {
        values[each.name] = each.defaultValue;
    }
    return values;
}
