// One parameter is read and held against its own limits.
#include "jighost/sequence/ParameterReader.h"

#include <set>

#include "jighost/operations/OperationText.h"
#include "jighost/text/NearestName.h"
#include "jighost/text/Numbers.h"

static const std::size_t MOST_PARAMETERS = 100;

static FIELD_KIND ReadKind(const YamlFile& file, const YAML::Node& node) {
    const std::string text = file.Text(node, "the type of a parameter");
    std::vector<std::string> types;
    std::string list;
    for (const FIELD_KIND kind :
         {FIELD_KIND::UNSIGNED, FIELD_KIND::SIGNED, FIELD_KIND::DOUBLE, FIELD_KIND::TEXT,
          FIELD_KIND::BYTES}) {
        if (text == TypeText(kind)) {
            return kind;
        }
        types.emplace_back(TypeText(kind));
        list += (list.empty() ? "" : ", ") + types.back();
    }
    file.Refuse(
        node, "expected the type of a parameter (" + list + "), got '" + text + "'" +
                  NearestNames(text, types));
}

double ReadQuantity(const YamlFile& file, const YAML::Node& node, const std::string& text) {
    const auto number = ParseQuantity(text);
    if (!number) {
        file.Refuse(node, "expected a number, got '" + text + "'");
    }
    return *number;
}

static PARAMETER ReadParameter(
    const YamlFile& file, const YAML::Node& key, const YAML::Node& node) {
    PARAMETER parameter;
    parameter.name = file.Text(key, "the name of a parameter");
    if (!IsParameterName(parameter.name)) {
        file.Refuse(
            key, "expected the name of a parameter, letters, digits and _, got '" + parameter.name +
                     "'");
    }
    const auto limit = [&](const YAML::Node& value) {
        return ReadQuantity(file, value, file.Text(value, "a number"));
    };
    file.ReadMap(
        node, "a parameter",
        {
            {"type", [&](const auto& value) { parameter.kind = ReadKind(file, value); }},
            {"min", [&](const auto& value) { parameter.limits.min = limit(value); }},
            {"max", [&](const auto& value) { parameter.limits.max = limit(value); }},
            {"default",
             [&](const auto& value) { parameter.defaultValue = file.Text(value, "a value"); }},
            {"question",
             [&](const auto& value) { parameter.question = file.Text(value, "a question"); }},
        });
    if (!node["type"]) {
        file.Refuse(key, "expected the type: of the parameter " + parameter.name + ", got none");
    }
    if (parameter.defaultValue) {
        file.Explain(node["default"], [&] { CheckValue(parameter, *parameter.defaultValue); });
    }
    return parameter;
}

std::vector<PARAMETER> ReadParameters(
    const YamlFile& file, const YAML::Node& node, Mistakes& mistakes, const std::string& suffix) {
    file.RequireMap(node, "parameters by their names");
    if (node.size() > MOST_PARAMETERS) {
        file.Refuse(node, "expected at most " + std::to_string(MOST_PARAMETERS) + " parameters");
    }
    std::vector<PARAMETER> parameters;
    std::set<std::string> names;
    for (const auto& entry : node) {
        const auto read = [&] {
            const PARAMETER parameter = ReadParameter(file, entry.first, entry.second);
            if (!names.insert(parameter.name).second) {
                file.Refuse(
                    entry.first,
                    "expected each parameter once, got '" + parameter.name + "' again");
            }
            parameters.push_back(parameter);
        };
        mistakes.Gather(read, suffix);
    }
    return parameters;
}
