// A file is read once without values, which tells what is wrong with it, and then for each run.
#include "jighost/sequence/SequenceFile.h"

#include <set>

#include "jighost/sequence/FilledText.h"
#include "jighost/sequence/Mistakes.h"
#include "jighost/sequence/ParameterReader.h"
#include "jighost/sequence/SequenceFormat.h"
#include "jighost/sequence/StepRange.h"
#include "jighost/sequence/StepReader.h"
#include "jighost/session/FolderBlock.h"
#include "jighost/text/HostError.h"
#include "platform/Utf8Path.h"

RecordBytes BuildRecord(const OPERATION_INFO& info, const std::vector<FIELD_VALUE>& fields) {
    RecordBytes bytes = NewRecord(*info.record);
    SetFields(info.name, *info.record, bytes, fields);
    return bytes;
}

namespace {

/// Reads the whole file with some values; what is wrong in it is gathered.
class SequenceReader {
  public:
    SequenceReader(const YamlFile& file, const VALUES& values, Mistakes& mistakes)
        : m_File(file), m_Texts(file, values), m_Mistakes(mistakes) {}

    SEQUENCE Read() {
        m_Mistakes.Gather([this] { ReadKeys(); });
        m_Mistakes.Gather([this] { CheckNames(); });
        m_Mistakes.Gather([this] { CheckWhole(); });
        return std::move(m_Sequence);
    }

  private:
    void ReadKeys() {
        m_File.ReadMap(
            m_File.Root(), "a sequence",
            {
                {"format", [](const YAML::Node&) {}},
                {"name",
                 [this](const auto& node) {
                     m_Sequence.name = m_Texts.Text(node, "a name").value_or(node.Scalar());
                 }},
                {"folder", [this](const auto& node) { ReadFolder(node); }},
                {"parameters", [](const YAML::Node&) {}},
                {"steps", [this](const auto& node) { ReadSteps(node, m_Sequence.steps); }},
                {"always",
                 [this](const auto& node) {
                     RequireNewFormat(m_File, node, "no always:");
                     ReadSteps(node, m_Sequence.always);
                 }},
            });
    }

    void ReadFolder(const YAML::Node& node) {
        const auto folder = m_Texts.Path(node, "a folder");
        m_File.Explain(
            node, [&] { m_Sequence.folderText = folder ? FolderBlockText(PathOf(*folder)) : ""; });
    }

    void ReadSteps(const YAML::Node& node, std::vector<STEP>& steps) {
        m_File.RequireList(node, "a list of steps");
        for (const YAML::Node& each : node) {
            m_Mistakes.Gather([&] { steps.push_back(ReadStep(m_Texts, each)); });
        }
    }

    /// A step is found by its name: two of one name would leave open which is meant. Steps that
    /// nobody named go by their operation's name, which may come again.
    void CheckNames() const {
        std::set<std::string> names;
        for (const std::vector<STEP>* pSteps : {&m_Sequence.steps, &m_Sequence.always}) {
            for (const STEP& step : *pSteps) {
                if (!step.namePlace.empty() && !names.insert(step.name).second) {
                    throw HostError(
                        EXIT_WRONG_USE, step.namePlace + ": expected each name of a step once, " +
                                            "got '" + step.name + "' again");
                }
            }
        }
    }

    void CheckWhole() const {
        const YAML::Node& root = m_File.Root();
        const bool bSteps = !m_Sequence.steps.empty();
        if (bSteps && !root["folder"] && HasDump(m_Sequence, {0, m_Sequence.steps.size() - 1})) {
            m_File.Refuse(root, "expected folder: for LoadPropertyData, got none");
        }
        if (!root["steps"] || (root["steps"].IsSequence() && root["steps"].size() == 0)) {
            m_File.Refuse(root, "expected steps: with a step at least, got none");
        }
    }

    const YamlFile& m_File;
    const FilledText m_Texts;
    Mistakes& m_Mistakes;
    SEQUENCE m_Sequence;
};

}  // namespace

SequenceFile::SequenceFile(const std::string& path) : m_File(path, SEQUENCE_FORMAT) {
    Mistakes mistakes;
    if (const YAML::Node parameters = m_File.Root()["parameters"]) {
        mistakes.Gather([&] {
            RequireNewFormat(m_File, parameters, "no parameters:");
            m_Parameters = ReadParameters(m_File, parameters, mistakes);
        });
    }
    SequenceReader(m_File, DefaultValues(m_Parameters), mistakes).Read();
    mistakes.ThrowIfAny();
}

SEQUENCE SequenceFile::Read(const VALUES& values) const {
    Mistakes mistakes;
    SEQUENCE sequence = SequenceReader(m_File, values, mistakes).Read();
    mistakes.ThrowIfAny();
    sequence.values = values;
    return sequence;
}
