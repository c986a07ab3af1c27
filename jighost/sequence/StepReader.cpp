// What a step's keys hold, each with its line.
#include "jighost/sequence/StepReader.h"

#include <regex>

#include "jighost/operations/ResultName.h"
#include "jighost/sequence/MeasureReader.h"
#include "jighost/sequence/SequenceFormat.h"
#include "jighost/text/HostError.h"
#include "jighost/text/NearestName.h"
#include "jighost/text/Numbers.h"

static const std::uint32_t MAX_RETRIES = 1000;
static const std::uint32_t MAX_PAUSE = 3'600'000;  // milliseconds
static const char TIME[] = "a time from 1 ms to 3600000 ms";
static const char ON_UNEXPECTED[] =
    "stop, continue or retry N after M ms, then stop or continue; N from 1 to 1000, M up to "
    "3600000";

namespace {

/// Reads one step; what is wrong in it is told with its line.
class StepReader {
  public:
    StepReader(const FilledText& texts, const YAML::Node& node)
        : m_Texts(texts), m_File(texts.File()), m_Node(node) {}

    STEP Read() {
        m_File.RequireMap(m_Node, "a step with its operation");
        if (!m_Node["operation"]) {
            m_File.Refuse(m_Node, "expected a step with its operation, got none");
        }
        // First of all, since the fields are those of its record.
        ReadOperation(m_Node["operation"]);
        m_File.ReadMap(
            m_Node, "a step",
            {
                {"operation", [](const YAML::Node&) {}},
                {"name", [this](const auto& node) { ReadName(node); }},
                {"record", [this](const auto& node) { m_Step.fields = Fields(node); }},
                {"expect", [this](const auto& node) { ReadResult(node); }},
                {"expect_fields", [this](const auto& node) { ReadResultFields(node); }},
                {"measure", [this](const auto& node) { ReadMeasure(node); }},
                {"wait", [this](const auto& node) { m_Step.wait = Time(node, "no wait:"); }},
                {"time_limit",
                 [this](const auto& node) { m_Step.timeLimit = Time(node, "no time_limit:"); }},
                {"on_unexpected", [this](const auto& node) { ReadOnUnexpected(node); }},
            });
        const YAML::Node record = m_Node["record"];
        m_File.Explain(
            m_Node, [&] { CheckRecordGiven(*m_Step.info, record && record.size() > 0); });
        return std::move(m_Step);
    }

  private:
    void ReadOperation(const YAML::Node& node) {
        m_Step.name = m_File.Text(node, "the name of an operation");
        m_File.Explain(node, [this] { m_Step.info = &KnownOperation(m_Step.name); });
    }

    void ReadName(const YAML::Node& node) {
        if (const auto name = m_Texts.Text(node, "a name")) {
            m_Step.name = *name;
        }
    }

    std::vector<FIELD_VALUE> Fields(const YAML::Node& node) const {
        m_File.RequireMap(node, "the fields of a record");
        std::vector<FIELD_VALUE> fields;
        RecordBytes record = NewRecord(*m_Step.info->record);
        for (const auto& entry : node) {
            const auto field = m_Texts.Text(entry.first, "the name of a field");
            const auto value = m_Texts.Text(entry.second, "the value of a field");
            m_File.Explain(entry.first, [&] { AddField(fields, record, field, value); });
        }
        return fields;
    }

    void AddField(
        std::vector<FIELD_VALUE>& fields, RecordBytes& record,
        const std::optional<std::string>& field, const std::optional<std::string>& value) const {
        const OPERATION_INFO& info = *m_Step.info;
        if (field && value) {
            fields.push_back({*field, *value});
            SetFields(info.name, *info.record, record, fields);
        } else if (field) {
            CheckField(info.name, *info.record, *field);
        }
    }

    void ReadResult(const YAML::Node& node) {
        const auto text = m_Texts.Text(node, "a result");
        m_Step.result = text ? ParseResult(*text) : std::nullopt;
        if (text && !m_Step.result) {
            m_File.Refuse(
                node, "expected the name or number of a result, got '" + *text + "'" +
                          NearestNames(*text, ResultNames()));
        }
    }

    void ReadResultFields(const YAML::Node& node) {
        RequireFilled(node);
        m_Step.resultFields = Fields(node);
    }

    void ReadMeasure(const YAML::Node& node) {
        RequireFilled(node);
        m_Step.measures = ReadMeasures(m_Texts, *m_Step.info, node);
    }

    /// Of an operation that fills none the record would come back as it was given.
    void RequireFilled(const YAML::Node& node) const {
        if (!FillsRecord(*m_Step.info)) {
            m_File.Refuse(
                node, std::string("expected fields of an operation that fills its record, which ") +
                          m_Step.info->name + " does not");
        }
    }

    std::chrono::milliseconds Time(const YAML::Node& node, const std::string& instead) const {
        static const std::regex FORM("(\\d{1,7}) ms");
        RequireNewFormat(m_File, node, instead);
        const auto text = m_Texts.Text(node, TIME);
        std::smatch parts;
        const bool bTime = text && std::regex_match(*text, parts, FORM);
        const auto time = bTime ? ParseNumber<std::uint32_t>(parts[1].str()).value_or(0) : 0;
        if (text && (time == 0 || time > MAX_PAUSE)) {
            m_File.Refuse(node, std::string("expected ") + TIME + ", got '" + *text + "'");
        }
        return std::chrono::milliseconds(time);
    }

    /// Of "retry 3 after 500 ms, then continue" what stands behind "retry 3" may be missing.
    void ReadOnUnexpected(const YAML::Node& node) {
        static const std::regex FORM(
            "(?:retry (\\d{1,4})(?: after (\\d{1,7}) ms)?(?:$|, then (?!$)))?(stop|continue)?");
        const std::string text = m_File.Text(node, ON_UNEXPECTED);
        std::smatch parts;
        if (text.empty() || !std::regex_match(text, parts, FORM)) {
            m_File.RefuseValue(node, ON_UNEXPECTED);
        }
        const auto retries = ParseNumber<std::uint32_t>(parts[1].str());
        const auto pause = ParseNumber<std::uint32_t>(parts[2].str());
        if (retries && (*retries == 0 || *retries > MAX_RETRIES || pause.value_or(0) > MAX_PAUSE)) {
            m_File.RefuseValue(node, ON_UNEXPECTED);
        }
        if (pause || (retries && parts[3].matched)) {
            RequireNewFormat(m_File, node, "retry N alone");
        }
        m_Step.retries = retries.value_or(0);
        m_Step.pause = std::chrono::milliseconds(pause.value_or(0));
        m_Step.bContinue = parts[3] == "continue";
    }

    const FilledText& m_Texts;
    const YamlFile& m_File;
    const YAML::Node m_Node;
    STEP m_Step;
};

}  // namespace

STEP ReadStep(const FilledText& texts, const YAML::Node& node) {
    return StepReader(texts, node).Read();
}
