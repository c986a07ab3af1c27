// The steps read from YAML, with all that is wrong in them found at once.
#include "jighost/sequence/SequenceFile.h"

#include <algorithm>
#include <regex>
#include <set>

#include "jighost/operations/ResultName.h"
#include "jighost/session/FolderBlock.h"
#include "jighost/text/HostError.h"
#include "jighost/text/NearestName.h"
#include "jighost/text/Numbers.h"
#include "jighost/text/YamlFile.h"
#include "platform/Utf8Path.h"

static const std::int64_t SEQUENCE_FORMAT = 2;

static const std::uint32_t MAX_RETRIES = 1000;
static const std::uint32_t MAX_PAUSE = 3'600'000;  // milliseconds
static const char ON_UNEXPECTED[] =
    "stop, continue or retry N after M ms, then stop or continue; N from 1 to 1000, M up to "
    "3600000";

/// Refuses in a file of format 1 what only newer ones have.
static void RequireFormat(
    const YamlFile& file, const YAML::Node& node, const std::string& expected) {
    if (file.Format() < SEQUENCE_FORMAT) {
        file.Refuse(
            node, "expected " + expected +
                      " in a sequence of format 1, which has no more; format: " +
                      std::to_string(SEQUENCE_FORMAT) + " has");
    }
}

RecordBytes BuildRecord(const OPERATION_INFO& info, const std::vector<FIELD_VALUE>& fields) {
    RecordBytes bytes = NewRecord(*info.record);
    SetFields(info.name, *info.record, bytes, fields);
    return bytes;
}

namespace {

/// Reads one step; what is wrong in it is told with its line.
class StepReader {
  public:
    StepReader(const YamlFile& file, const YAML::Node& node) : m_File(file), m_Node(node) {}

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
                {"name", [this](const auto& node) { m_Step.name = m_File.Text(node, "a name"); }},
                {"record", [this](const auto& node) { m_Step.fields = Fields(node); }},
                {"expect", [this](const auto& node) { ReadResult(node); }},
                {"expect_fields", [this](const auto& node) { ReadResultFields(node); }},
                {"on_unexpected", [this](const auto& node) { ReadOnUnexpected(node); }},
            });
        Explain(m_Node, [this] { CheckRecordGiven(*m_Step.info, !m_Step.fields.empty()); });
        return std::move(m_Step);
    }

  private:
    /// Does what throws a HostError, and adds the line to it.
    template <class Work>
    void Explain(const YAML::Node& node, const Work& work) const {
        try {
            work();
        } catch (const HostError& e) {
            m_File.Refuse(node, e.what());
        }
    }

    void ReadOperation(const YAML::Node& node) {
        m_Step.name = m_File.Text(node, "the name of an operation");
        Explain(node, [this] { m_Step.info = &KnownOperation(m_Step.name); });
    }

    std::vector<FIELD_VALUE> Fields(const YAML::Node& node) const {
        m_File.RequireMap(node, "the fields of a record");
        std::vector<FIELD_VALUE> fields;
        const OPERATION_INFO& info = *m_Step.info;
        RecordBytes record = NewRecord(*info.record);
        for (const auto& entry : node) {
            fields.push_back(
                {m_File.Text(entry.first, "the name of a field"),
                 m_File.Text(entry.second, "the value of a field")});
            Explain(entry.first, [&] { SetFields(info.name, *info.record, record, fields); });
        }
        return fields;
    }

    void ReadResult(const YAML::Node& node) {
        const std::string text = m_File.Text(node, "a result");
        m_Step.result = ParseResult(text);
        if (!m_Step.result) {
            m_File.Refuse(
                node, "expected the name or number of a result, got '" + text + "'" +
                          NearestNames(text, ResultNames()));
        }
    }

    /// Of an operation that fills none the record would come back as it was given.
    void ReadResultFields(const YAML::Node& node) {
        if (!FillsRecord(*m_Step.info)) {
            m_File.Refuse(
                node, std::string("expected fields of an operation that fills its record, which ") +
                          m_Step.info->name + " does not");
        }
        m_Step.resultFields = Fields(node);
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
            RequireFormat(m_File, node, "retry N alone");
        }
        m_Step.retries = retries.value_or(0);
        m_Step.pause = std::chrono::milliseconds(pause.value_or(0));
        m_Step.bContinue = parts[3] == "continue";
    }

    const YamlFile& m_File;
    const YAML::Node m_Node;
    STEP m_Step;
};

}  // namespace

static std::vector<STEP> ReadSteps(const YamlFile& file, const YAML::Node& node) {
    file.RequireList(node, "a list of steps");
    std::vector<STEP> steps;
    std::string mistakes;
    for (const YAML::Node& each : node) {
        try {
            steps.push_back(StepReader(file, each).Read());
        } catch (const HostError& e) {
            mistakes += (mistakes.empty() ? "" : "\n") + std::string(e.what());
        }
    }
    if (!mistakes.empty()) {
        throw HostError(EXIT_WRONG_USE, HostError::LINES{mistakes});
    }
    return steps;
}

/// A step is found by its name: two of one name would leave open which is meant. Steps that nobody
/// named go by their operation's name, which may come again.
static void CheckNames(const YamlFile& file, const YAML::Node& root) {
    std::set<std::string> names;
    for (const char* pszList : {"steps", "always"}) {
        for (const YAML::Node& step : root[pszList]) {
            const YAML::Node name = step["name"];
            if (name && !names.insert(name.Scalar()).second) {
                file.Refuse(
                    name, "expected each name of a step once, got '" + name.Scalar() + "' again");
            }
        }
    }
}

static std::string ReadFolder(const YamlFile& file, const YAML::Node& node) {
    const std::string folder = file.Text(node, "a folder");
    try {
        return FolderBlockText(PathOf(folder));
    } catch (const HostError& e) {
        file.Refuse(node, e.what());
    }
}

SEQUENCE ReadSequence(const std::string& path) {
    const YamlFile file(path, SEQUENCE_FORMAT);
    SEQUENCE sequence;
    file.ReadMap(
        file.Root(), "a sequence",
        {
            {"format", [](const YAML::Node&) {}},
            {"name", [&](const auto& node) { sequence.name = file.Text(node, "a name"); }},
            {"folder", [&](const auto& node) { sequence.folderText = ReadFolder(file, node); }},
            {"steps", [&](const auto& node) { sequence.steps = ReadSteps(file, node); }},
            {"always",
             [&](const auto& node) {
                 RequireFormat(file, node, "no always:");
                 sequence.always = ReadSteps(file, node);
             }},
        });
    CheckNames(file, file.Root());
    const auto isDump = [](const STEP& step) { return IsDump(*step.info); };
    const bool bDumps = std::any_of(sequence.steps.begin(), sequence.steps.end(), isDump) ||
                        std::any_of(sequence.always.begin(), sequence.always.end(), isDump);
    if (bDumps && sequence.folderText.empty()) {
        file.Refuse(file.Root(), "expected folder: for LoadPropertyData, got none");
    }
    if (sequence.steps.empty()) {
        file.Refuse(file.Root(), "expected steps: with a step at least, got none");
    }
    return sequence;
}
