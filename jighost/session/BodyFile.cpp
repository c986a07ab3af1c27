// A body's values read from YAML and written as YAML.
#include "jighost/session/BodyFile.h"

#include <algorithm>
#include <limits>
#include <map>
#include <sstream>

#include "adjustment/PropertyTable.h"
#include "bodylnk/SimulatedBody.h"
#include "jighost/text/HostError.h"
#include "jighost/text/Numbers.h"
#include "jighost/text/YamlFile.h"
#include "platform/Utf8Path.h"
#include "platform/WholeFile.h"
#include "trace/Hex.h"

// From the second one on the last line says that it is the last: any other could be missing unseen.
static const std::int64_t BODY_FORMAT = 2;
static const char END_KEY[] = "end";

static const std::size_t WORDS_IN_LINE = 8;

// --- Reading ---

/// A list with exactly as many numbers as `words` has, each of which fits.
template <class Words>
static void ReadWords(
    const YamlFile& file, const YAML::Node& node, const std::string& what, Words& words) {
    using Word = typename Words::value_type;
    const std::string expected = "a list of " + std::to_string(words.size()) + " numbers";
    file.RequireList(node, expected);
    if (node.size() != words.size()) {
        file.Refuse(
            node, "expected " + expected + " for " + what + ", got " + std::to_string(node.size()));
    }
    for (std::size_t i = 0; i < words.size(); ++i) {
        words[i] = static_cast<Word>(file.Number(
            node[i], what, std::numeric_limits<Word>::min(), std::numeric_limits<Word>::max()));
    }
}

static void ReadProperty(
    const YamlFile& file, const YAML::Node& key, const YAML::Node& value,
    const std::map<std::uint32_t, std::uint32_t>& sizes) {
    const auto id = static_cast<std::uint32_t>(file.Number(key, "a property id", 0, 0xFFFFFFFF));
    const auto size = sizes.find(id);
    if (size == sizes.end()) {
        file.RefuseValue(key, "the id of a property that the body has");
    }
    if (SimulatedBody::SavedProperties().contains(id)) {
        file.Refuse(key, "expected each property once, got '" + key.Scalar() + "' again");
    }
    const std::string expected =
        std::to_string(size->second) + " bytes as hexadecimal digits for " + key.Scalar();
    const auto bytes = ParseHex(file.Text(value, expected));
    if (!bytes || bytes->size() != size->second) {
        file.Refuse(
            value, "expected " + expected +
                       (bytes ? ", got " + std::to_string(bytes->size()) : ", got other text"));
    }
    SimulatedBody::SetProperty(id, *bytes);
}

static void CheckEnd(const YamlFile& file) {
    YAML::Node lastKey;
    for (const auto& entry : file.Root()) {
        lastKey.reset(entry.first);
    }
    if (file.Format() == BODY_FORMAT && lastKey.Scalar() != END_KEY) {
        file.Refuse(lastKey, "the file is not whole: expected 'end: true' as its last line");
    }
}

void LoadBody(const std::string& path) {
    const YamlFile file(path, BODY_FORMAT);
    const auto readProperties = [&](const YAML::Node& node) {
        const auto sizes = SimulatedBody::Properties();
        file.RequireMap(node, "a map of properties by id");
        for (const auto& entry : node) {
            ReadProperty(file, entry.first, entry.second, sizes);
        }
    };
    file.ReadMap(
        file.Root(), "a body",
        {
            {"format", [](const YAML::Node&) {}},
            {"calendar",
             [&](const auto& node) {
                 ReadWords(file, node, "calendar", SimulatedBody::Calendar());
             }},
            {"eeprom",
             [&](const auto& node) { ReadWords(file, node, "eeprom", SimulatedBody::Eeprom()); }},
            {"properties", readProperties},
            {END_KEY,
             [&](const auto& node) {
                 if (file.Text(node, "true") != "true") {
                     file.RefuseValue(node, "true");
                 }
             }},
        });
    CheckEnd(file);
}

// --- Writing ---

std::string PropertyName(std::uint32_t id) {
    const auto end = PropertyDataTable.begin() + PROPERTY_COUNT;
    const auto row = std::find_if(PropertyDataTable.begin(), end, [&](const PROPERTY_DATA_T& each) {
        return each.PropertyId == id;
    });
    return row == end ? "" : row->PropertyName;
}

static void WriteEeprom(std::ostream& text) {
    const auto& eeprom = SimulatedBody::Eeprom();
    text << "# 128 words of 16 bits.\neeprom: [";
    for (std::size_t i = 0; i < eeprom.size(); ++i) {
        text << (i % WORDS_IN_LINE == 0 ? "\n  " : " ") << "0x" << HexText(eeprom[i], 4) << ',';
    }
    text << "\n]\n";
}

static void WriteCalendar(std::ostream& text) {
    text
        << "# Seconds, minutes, hours, day, month, year, days of the week and of the year, summer\n"
           "# time.\ncalendar: [";
    const char* pszSeparator = "";
    for (const std::int32_t word : SimulatedBody::Calendar()) {
        text << pszSeparator << word;
        pszSeparator = ", ";
    }
    text << "]\n";
}

static void WriteProperties(std::ostream& text) {
    text << "# Bytes by property id; a property that is not here has its factory value.\n"
            "properties:";
    const auto properties = SimulatedBody::SavedProperties();
    text << (properties.empty() ? " {}\n" : "\n");
    for (const auto& [id, bytes] : properties) {
        const std::string name = PropertyName(id);
        text << "  0x" << HexText(id, 8) << ": " << HexBytes(bytes)
             << (name.empty() ? "" : "  # " + name) << '\n';
    }
}

std::string BodyText() {
    std::ostringstream text;
    text << "# What a simulated camera body keeps over power off. jighost writes this file anew\n"
            "# when a run changes it; comments of your own are lost then.\n"
            "format: "
         << BODY_FORMAT << '\n';
    WriteCalendar(text);
    WriteEeprom(text);
    WriteProperties(text);
    text << END_KEY << ": true\n";
    return text.str();
}

void WriteNewBody(const std::string& path, const std::string& text) {
    if (!WithExitCode(EXIT_HOST_ERROR, [&] { return MakeFile(PathOf(path), text); })) {
        throw HostError(EXIT_WRONG_USE, path + " is there already");
    }
}

void CheckBodyWritable(const std::string& path) {
    WithExitCode(EXIT_WRONG_USE, [&] { CheckReplaceable(PathOf(path)); });
}

void WriteBody(const std::string& path, const std::string& text) {
    WithExitCode(
        EXIT_HOST_ERROR, [&] { ReplaceFile(PathOf(path), text, OUTLASTS::POWER_FAILURES); });
}
