// What is measured is held against the record that comes back: numbers have limits, texts a
// pattern.
#include "jighost/sequence/MeasureReader.h"

#include <set>

#include "jighost/sequence/ParameterReader.h"
#include "jighost/sequence/Pattern.h"
#include "jighost/sequence/SequenceFormat.h"
#include "jighost/text/HostError.h"

static const std::size_t MOST_MEASURES = 100;  // of a step

namespace {

class MeasureReader {
  public:
    MeasureReader(const FilledText& texts, const OPERATION_INFO& info, const YAML::Node& node)
        : m_Texts(texts), m_File(texts.File()), m_Info(info), m_Node(node) {}

    MEASURE Read() {
        m_File.ReadMap(
            m_Node, "a measurement",
            {
                {"field", [this](const auto& node) { ReadField(node); }},
                {"name", [this](const auto& node) { m_Measure.name = Text(node, "a name"); }},
                {"unit", [this](const auto& node) { m_Measure.unit = Text(node, "a unit"); }},
                {"min", [this](const auto& node) { m_Measure.limits.min = Number(node); }},
                {"max", [this](const auto& node) { m_Measure.limits.max = Number(node); }},
                {"value", [this](const auto& node) { m_Value = Number(node); }},
                {"tolerance", [this](const auto& node) { m_Tolerance = Number(node); }},
                {"pattern", [this](const auto& node) { ReadPattern(node); }},
            });
        CheckKind();
        CheckLimits();
        return std::move(m_Measure);
    }

  private:
    std::string Text(const YAML::Node& node, const std::string& expected) const {
        return m_Texts.Text(node, expected).value_or(node.Scalar());
    }

    std::optional<double> Number(const YAML::Node& node) const {
        const auto text = m_Texts.Text(node, "a number");
        return text ? std::optional(ReadQuantity(m_File, node, *text)) : std::nullopt;
    }

    void ReadField(const YAML::Node& node) {
        if (const auto field = m_Texts.Text(node, "a field")) {
            m_File.Explain(node, [&] { CheckField(m_Info.name, *m_Info.record, *field); });
            m_Measure.field = *field;
        }
    }

    void ReadPattern(const YAML::Node& node) {
        if (const auto pattern = m_Texts.Text(node, "a pattern")) {
            m_File.Explain(node, [&] { CheckPattern(*pattern); });
            m_Measure.pattern = *pattern;
        }
    }

    /// Numbers have limits, texts a pattern.
    void CheckKind() {
        if (!m_Node["field"]) {
            m_File.Refuse(m_Node, "expected the field: that is measured, got none");
        }
        if (m_Measure.field.empty()) {
            return;  // known only with a value
        }
        m_Measure.name = m_Measure.name.empty() ? m_Measure.field : m_Measure.name;
        const FIELD_KIND kind = FieldKind(*m_Info.record, m_Measure.field);
        const bool bNumber = kind != FIELD_KIND::TEXT && kind != FIELD_KIND::BYTES;
        const bool bLimits = m_Node["min"] || m_Node["max"] || m_Node["value"];
        if (bNumber ? static_cast<bool>(m_Node["pattern"]) : bLimits) {
            m_File.Refuse(
                m_Node, std::string("expected ") + (bNumber ? "limits of a number, got a pattern"
                                                            : "a pattern of a text, got limits"));
        }
    }

    /// A value with its tolerance becomes limits.
    void CheckLimits() {
        const bool bLimits = m_Node["min"] || m_Node["max"];
        if ((m_Node["value"] && bLimits) || (m_Node["tolerance"] && !m_Node["value"])) {
            m_File.Refuse(m_Node, "expected min: and max:, or value: with its tolerance:");
        }
        if (m_Value && (!m_Node["tolerance"] || m_Tolerance)) {
            const double tolerance = m_Tolerance.value_or(0);
            m_Measure.limits = {*m_Value - tolerance, *m_Value + tolerance};
        }
        const LIMITS& limits = m_Measure.limits;
        if (limits.min && limits.max && *limits.min > *limits.max) {
            m_File.Refuse(
                m_Node, "expected limits with something between, got " + LimitsText(limits));
        }
    }

    const FilledText& m_Texts;
    const YamlFile& m_File;
    const OPERATION_INFO& m_Info;
    const YAML::Node m_Node;
    MEASURE m_Measure;
    std::optional<double> m_Value;
    std::optional<double> m_Tolerance;
};

}  // namespace

std::vector<MEASURE> ReadMeasures(
    const FilledText& texts, const OPERATION_INFO& info, const YAML::Node& node) {
    const YamlFile& file = texts.File();
    RequireNewFormat(file, node, "no measure:");
    file.RequireList(node, "a list of measurements");
    if (node.size() > MOST_MEASURES) {
        file.Refuse(node, "expected at most " + std::to_string(MOST_MEASURES) + " measurements");
    }
    std::vector<MEASURE> measures;
    std::set<std::string> names;
    for (const YAML::Node& each : node) {
        measures.push_back(MeasureReader(texts, info, each).Read());
        const std::string& name = measures.back().name;
        if (!name.empty() && !names.insert(name).second) {
            file.Refuse(each, "expected each name of a measurement once, got '" + name + "' again");
        }
    }
    return measures;
}
