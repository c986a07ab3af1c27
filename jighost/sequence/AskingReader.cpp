// The limits belong to numbers, the pattern to texts.
#include "jighost/sequence/AskingReader.h"

#include "jighost/sequence/ParameterReader.h"
#include "jighost/sequence/Pattern.h"
#include "jighost/sequence/SequenceFormat.h"
#include "jighost/text/HostError.h"

static ANSWER_KIND ReadAnswer(const YamlFile& file, const YAML::Node& node) {
    const std::string text = file.Text(node, "yes or no, number or text");
    if (text == "number" || text == "text") {
        return text == "number" ? ANSWER_KIND::NUMBER : ANSWER_KIND::TEXT;
    }
    if (text != "yes or no") {
        file.RefuseValue(node, "yes or no, number or text");
    }
    return ANSWER_KIND::YES_OR_NO;
}

static void CheckJudgement(const YamlFile& file, const YAML::Node& node, const ASKING& asking) {
    const bool bLimits = node["min"] || node["max"];
    if ((bLimits && asking.answer != ANSWER_KIND::NUMBER) ||
        (node["pattern"] && asking.answer != ANSWER_KIND::TEXT)) {
        file.Refuse(node, "expected min: and max: of a number, pattern: of a text");
    }
}

STEP ReadAsking(const FilledText& texts, const YAML::Node& node) {
    const YamlFile& file = texts.File();
    RequireNewFormat(file, node, "no ask:");
    STEP step;
    step.info = &ASK_OPERATION;
    ASKING asking;
    MEASURE& measure = asking.measure;
    const auto text = [&](const YAML::Node& value, const char* pszExpected) {
        return texts.Text(value, pszExpected).value_or(value.Scalar());
    };
    const auto limit = [&](const YAML::Node& value) {
        const auto number = texts.Text(value, "a number");
        return number ? std::optional(ReadQuantity(file, value, *number)) : std::nullopt;
    };
    file.ReadMap(
        node, "a step that asks",
        {
            {"ask", [&](const auto& value) { asking.text = text(value, "a question"); }},
            {"name", [&](const auto& value) { step.name = text(value, "a name"); }},
            {"answer", [&](const auto& value) { asking.answer = ReadAnswer(file, value); }},
            {"unit", [&](const auto& value) { measure.unit = text(value, "a unit"); }},
            {"min", [&](const auto& value) { measure.limits.min = limit(value); }},
            {"max", [&](const auto& value) { measure.limits.max = limit(value); }},
            {"pattern",
             [&](const auto& value) {
                 measure.pattern = text(value, "a pattern");
                 file.Explain(value, [&] { CheckPattern(measure.pattern); });
             }},
            {"on_unexpected",
             [&](const auto& value) {
                 const std::string word = file.Text(value, "stop or continue");
                 step.bContinue = word == "continue";
                 if (word != "stop" && !step.bContinue) {
                     file.RefuseValue(value, "stop or continue");
                 }
             }},
        });
    CheckJudgement(file, node, asking);
    if (asking.answer == ANSWER_KIND::YES_OR_NO) {
        measure.pattern = "yes";
    }
    step.name = step.name.empty() ? asking.text : step.name;
    measure.name = step.name;
    step.asking = std::move(asking);
    return step;
}
