// Steps are counted as they are read, so that no file becomes more of them than a run can have.
#include "jighost/sequence/SequenceReader.h"

#include <algorithm>
#include <memory>
#include <set>

#include "jighost/sequence/AskingReader.h"
#include "jighost/sequence/FilledText.h"
#include "jighost/sequence/ParameterReader.h"
#include "jighost/sequence/SequenceFormat.h"
#include "jighost/sequence/StepRange.h"
#include "jighost/sequence/StepReader.h"
#include "jighost/session/FolderBlock.h"
#include "jighost/text/HostError.h"
#include "jighost/text/NearestName.h"
#include "jighost/text/Numbers.h"
#include "platform/Utf8Path.h"
#include "recorder/Sha256.h"

static const std::size_t MOST_STEPS = 10'000;  // of a sequence
static const std::size_t MOST_ROUNDS = 1000;
static const std::size_t DEEPEST = 8;  // includes and repeats within one another

namespace {

/// What the readers of all files of one sequence share.
struct READING {
    explicit READING(Mistakes& all) : mistakes(all) {}

    SEQUENCE sequence;
    std::vector<STEP> includedAlways;
    std::set<std::string> names;  // given to steps
    std::size_t entryCount = 0;   // of all lists, as often as they are read
    bool bFolder = false;         // whether some file has one, known or not
    std::map<std::string, std::unique_ptr<YamlFile>> files;  // included so far
    Mistakes& mistakes;
};

/// Where a list of steps stands among includes and repeats.
struct SURROUNDINGS {
    std::vector<std::string> files;  // that are being read, the outermost first
    std::size_t depth = 0;
    std::string namePrefix;
    std::string nameSuffix;
    std::string includedBy;  // behind each mistake
};

/// One file, or one round of a repeat in it.
class SequenceReader {
  public:
    SequenceReader(READING& reading, const YamlFile& file, VALUES values, SURROUNDINGS surroundings)
        : m_Reading(reading),
          m_File(file),
          m_Values(std::move(values)),
          m_Texts(m_File, m_Values),
          m_Surroundings(std::move(surroundings)) {}
    SequenceReader(const SequenceReader&) = delete;
    SequenceReader& operator=(const SequenceReader&) = delete;

    /// The steps of its always: stand ahead of those that are there already.
    void ReadFile(std::vector<STEP>& steps, std::vector<STEP>& always) {
        Gather([&] {
            m_File.ReadMap(
                m_File.Root(), "a sequence",
                {
                    {"format", [](const YAML::Node&) {}},
                    {"name", [&](const auto& node) { ReadName(node); }},
                    {"folder", [&](const auto& node) { ReadFolder(node); }},
                    {"parameters", [](const YAML::Node&) {}},
                    {"steps", [&](const auto& node) { ReadSteps(node, steps); }},
                    {"always",
                     [&](const auto& node) {
                         RequireNewFormat(m_File, node, "no always:");
                         ReadSteps(node, always);
                     }},
                });
        });
        const YAML::Node list = m_File.Root()["steps"];
        if (!list || (list.IsSequence() && list.size() == 0)) {
            Gather([&] {
                m_File.Refuse(m_File.Root(), "expected steps: with a step at least, got none");
            });
        }
    }

    void ReadSteps(const YAML::Node& node, std::vector<STEP>& steps) {
        m_File.RequireList(node, "a list of steps");
        for (const YAML::Node& each : node) {
            Gather([&] { ReadEntry(each, steps); });
        }
    }

  private:
    void Gather(const std::function<void()>& work) {
        m_Reading.mistakes.Gather(work, m_Surroundings.includedBy);
    }

    void ReadName(const YAML::Node& node) {
        const std::string name = m_Texts.Text(node, "a name").value_or(node.Scalar());
        if (m_Surroundings.files.size() == 1) {
            m_Reading.sequence.name = name;
        }
    }

    /// A run has one folder for all its dumps.
    void ReadFolder(const YAML::Node& node) {
        const auto folder = m_Texts.Path(node, "a folder");
        m_Reading.bFolder = true;
        std::string& text = m_Reading.sequence.folderText;
        const std::string former = text;
        m_File.Explain(node, [&] { text = folder ? FolderBlockText(PathOf(*folder)) : former; });
        if (!former.empty() && text != former) {
            m_File.Refuse(node, "expected one folder: for a sequence and all that it includes");
        }
    }

    void ReadEntry(const YAML::Node& node, std::vector<STEP>& steps) {
        if (++m_Reading.entryCount > MOST_STEPS) {
            m_File.Refuse(
                node, "expected at most " + std::to_string(MOST_STEPS) + " steps, repeats counted");
        }
        if (node.IsMap() && node["include"]) {
            ReadInclude(node, steps);
        } else if (node.IsMap() && node["repeat"]) {
            ReadRepeat(node, steps);
        } else {
            const bool bAsks = node.IsMap() && node["ask"];
            STEP step = bAsks ? ReadAsking(m_Texts, node) : ReadStep(m_Texts, node);
            step.name = m_Surroundings.namePrefix + step.name + m_Surroundings.nameSuffix;
            CheckName(node["name"], step.name);
            steps.push_back(std::move(step));
        }
    }

    /// A step is found by its name: two of one name would leave open which is meant. Steps that
    /// nobody named go by their operation's name, which may come again.
    void CheckName(const YAML::Node& node, const std::string& name) {
        const bool bKnown = node && m_Texts.Text(node, "a name");
        if (bKnown && !m_Reading.names.insert(name).second) {
            m_File.Refuse(node, "expected each name of a step once, got '" + name + "' again");
        }
    }

    SURROUNDINGS Deeper(const YAML::Node& node) const {
        SURROUNDINGS deeper = m_Surroundings;
        if (++deeper.depth > DEEPEST) {
            m_File.Refuse(
                node, "expected includes and repeats at most " + std::to_string(DEEPEST) +
                          " deep within one another");
        }
        return deeper;
    }

    // --- Includes ---

    void ReadInclude(const YAML::Node& node, std::vector<STEP>& steps) {
        RequireNewFormat(m_File, node, "no include:");
        SURROUNDINGS inner = Deeper(node);
        std::optional<std::string> path;
        YAML::Node given;
        m_File.ReadMap(
            node, "an include",
            {
                {"include",
                 [&](const auto& value) { path = m_Texts.Path(value, "the path of a sequence"); }},
                {"name",
                 [&](const auto& value) {
                     const auto name = m_Texts.Text(value, "a name");
                     inner.namePrefix += name.value_or(value.Scalar()) + ": ";
                 }},
                {"parameters", [&](const auto& value) { given.reset(value); }},
            });
        if (!path) {
            return;
        }
        const YamlFile& file = Include(node["include"], *path, inner);
        const VALUES values = IncludedValues(file, node, given, inner);
        SequenceReader(m_Reading, file, values, inner).ReadFile(steps, m_Reading.includedAlways);
    }

    const YamlFile& Include(const YAML::Node& node, const std::string& text, SURROUNDINGS& inner) {
        const auto folder = PathOf(m_File.Path()).parent_path();
        const std::string path = TextOf((folder / PathOf(text)).lexically_normal());
        const auto& files = inner.files;
        if (std::find(files.begin(), files.end(), path) != files.end()) {
            m_File.Refuse(node, path + " includes itself");
        }
        inner.files.push_back(path);
        inner.includedBy = " (included by " + m_File.Place(node) + ')' + m_Surroundings.includedBy;
        auto& pFile = m_Reading.files[path];
        if (pFile == nullptr) {
            m_File.Explain(
                node, [&] { pFile = std::make_unique<YamlFile>(path, SEQUENCE_FORMAT); });
        }
        return *pFile;
    }

    VALUES IncludedValues(
        const YamlFile& file, const YAML::Node& node, const YAML::Node& given,
        const SURROUNDINGS& inner) {
        std::vector<PARAMETER> parameters;
        if (const YAML::Node list = file.Root()["parameters"]) {
            RequireNewFormat(file, list, "no parameters:");
            parameters = ReadParameters(file, list, m_Reading.mistakes, inner.includedBy);
        }
        VALUES values = DefaultValues(parameters);
        std::set<std::string> names;
        if (!given.IsNull()) {
            m_File.RequireMap(given, "values by the names of parameters");
        }
        for (const auto& entry : given) {
            Gather([&] { names.insert(ReadValue(parameters, entry.first, entry.second, values)); });
        }
        for (const PARAMETER& each : parameters) {
            if (!each.defaultValue && !names.contains(each.name)) {
                m_File.Refuse(
                    node, "expected a value of the parameter " + each.name + " of " + file.Path());
            }
        }
        return values;
    }

    std::string ReadValue(
        const std::vector<PARAMETER>& parameters, const YAML::Node& key, const YAML::Node& node,
        VALUES& values) const {
        std::string name = m_File.Text(key, "the name of a parameter");
        const auto value = m_Texts.Text(node, "a value");
        m_File.Explain(key, [&] {
            const PARAMETER& parameter = FindParameter(parameters, name);
            if (value) {
                CheckValue(parameter, *value);
            }
        });
        values[name] = value;
        return name;
    }

    // --- Repeats ---

    void ReadRepeat(const YAML::Node& node, std::vector<STEP>& steps) {
        RequireNewFormat(m_File, node, "no repeat:");
        const SURROUNDINGS inner = Deeper(node);
        std::vector<std::optional<std::string>> rounds;
        std::string name;
        m_File.ReadMap(
            node, "a repeat",
            {
                {"repeat", [&](const auto& value) { rounds = Rounds(value); }},
                {"as", [&](const auto& value) { name = RoundName(value); }},
                {"steps", [](const YAML::Node&) {}},
            });
        const YAML::Node list = node["steps"];
        if (!list || !list.IsSequence() || list.size() == 0) {
            m_File.Refuse(node, "expected steps: with a step at least, to be repeated");
        }
        const std::size_t mistakes = m_Reading.mistakes.Count();
        for (std::size_t i = 0; i < rounds.size() && m_Reading.mistakes.Count() == mistakes; ++i) {
            ReadRound(list, inner, name, rounds[i], steps);
        }
    }

    void ReadRound(
        const YAML::Node& list, SURROUNDINGS inner, const std::string& name,
        const std::optional<std::string>& value, std::vector<STEP>& steps) {
        VALUES values = m_Values;
        if (!name.empty()) {
            values[name] = value;
        }
        inner.nameSuffix += " [" + value.value_or("") + ']';
        SequenceReader(m_Reading, m_File, std::move(values), std::move(inner))
            .ReadSteps(list, steps);
    }

    /// The value of each round; of a number that is not known yet one round.
    std::vector<std::optional<std::string>> Rounds(const YAML::Node& node) const {
        std::vector<std::optional<std::string>> rounds;
        if (node.IsSequence()) {
            for (const YAML::Node& each : node) {
                rounds.push_back(m_Texts.Text(each, "a value"));
            }
        } else if (const auto text = m_Texts.Text(node, ROUNDS)) {
            const auto count = ParseNumber<std::uint32_t>(*text).value_or(0);
            for (std::uint32_t i = 1; i <= count && i <= MOST_ROUNDS + 1; ++i) {
                rounds.emplace_back(std::to_string(i));
            }
        } else {
            rounds.emplace_back();
        }
        if (rounds.empty() || rounds.size() > MOST_ROUNDS) {
            m_File.RefuseValue(node, ROUNDS);
        }
        return rounds;
    }

    std::string RoundName(const YAML::Node& node) const {
        std::string name = m_File.Text(node, "the name of the round's value");
        if (!IsParameterName(name) || m_Values.contains(name)) {
            m_File.Refuse(
                node,
                "expected a name that no parameter has, letters, digits and _, got '" + name + "'");
        }
        return name;
    }

    static constexpr char ROUNDS[] = "how often, from 1 to 1000, or a list of 1 to 1000 values";

    READING& m_Reading;
    const YamlFile& m_File;
    const VALUES m_Values;
    const FilledText m_Texts;
    const SURROUNDINGS m_Surroundings;
};

}  // namespace

static void CheckFolder(const YamlFile& file, const READING& reading) {
    const SEQUENCE& sequence = reading.sequence;
    if (!reading.bFolder && !sequence.steps.empty() &&
        HasDump(sequence, {0, sequence.steps.size() - 1})) {
        file.Refuse(file.Root(), "expected folder: for LoadPropertyData, got none");
    }
}

static RECORDED_FILE RecordedFile(const YamlFile& file) {
    return {file.Path(), "", Recorder::Sha256(file.Content())};
}

SEQUENCE ReadWithValues(const YamlFile& file, const VALUES& values, Mistakes& mistakes) {
    READING reading(mistakes);
    SEQUENCE& sequence = reading.sequence;
    SURROUNDINGS outermost;
    outermost.files = {file.Path()};
    SequenceReader(reading, file, values, outermost).ReadFile(sequence.steps, sequence.always);
    sequence.always.insert(
        sequence.always.begin(), reading.includedAlways.begin(), reading.includedAlways.end());
    sequence.values = values;
    sequence.files = {RecordedFile(file)};
    for (const auto& [path, pIncluded] : reading.files) {
        if (pIncluded != nullptr) {
            sequence.files.push_back(RecordedFile(*pIncluded));
        }
    }
    mistakes.Gather([&] { CheckFolder(file, reading); });
    return std::move(sequence);
}
