// The parser's nodes checked, with their line in each message.
#include "jighost/text/YamlFile.h"

#include <algorithm>
#include <set>

#include "jighost/text/HostError.h"
#include "jighost/text/NearestName.h"
#include "jighost/text/Numbers.h"
#include "platform/TextFile.h"
#include "platform/Utf8Path.h"

// Far more than what people write, or than what a body can save.
static const std::uint64_t LARGEST_FILE = 16'000'000;

// Between two values stands one of these; the parser takes more than 200 bytes for each.
static const std::string_view MARKS = "[{,:\r\n";
static const std::ptrdiff_t MOST_MARKS = 2'000'000;

static std::string ReadText(const std::string& path) {
    try {
        return ReadTextFile(PathOf(path), LARGEST_FILE);
    } catch (const std::runtime_error& e) {
        throw HostError(EXIT_WRONG_USE, e.what());
    }
}

static void CheckMarks(const std::string& path, const std::string& text) {
    const auto isMark = [](char character) { return MARKS.find(character) != MARKS.npos; };
    if (std::count_if(text.begin(), text.end(), isMark) > MOST_MARKS) {
        throw HostError(
            EXIT_WRONG_USE, path + ": expected at most " + std::to_string(MOST_MARKS) +
                                " lists, maps, elements and lines");
    }
}

static YAML::Node Parse(const std::string& path, const std::string& text) {
    CheckMarks(path, text);
    try {
        return YAML::Load(text);
    } catch (const YAML::Exception& e) {
        throw HostError(
            EXIT_WRONG_USE,
            path + ':' + std::to_string(e.mark.line + 1) + ": expected YAML: " + e.msg);
    }
}

YamlFile::YamlFile(const std::string& path, std::int64_t newestFormat)
    : m_Path(path), m_Content(ReadText(path)), m_Root(Parse(path, m_Content)) {
    const std::string newest = "format: " + std::to_string(newestFormat);
    RequireMap(m_Root, "a map with " + newest);
    const YAML::Node format = m_Root["format"];
    if (!format) {
        Refuse(m_Root, "expected " + newest + ", got none");
    }
    m_nFormat = Number(format, "format", 1, newestFormat);
}

void YamlFile::ReadMap(
    const YAML::Node& node, const std::string& what,
    const std::map<std::string, Reader>& readers) const {
    RequireMap(node, what);
    std::set<std::string> seen;
    for (const auto& entry : node) {
        const std::string key = Text(entry.first, "a key of " + what);
        const auto reader = readers.find(key);
        if (reader == readers.end()) {
            std::vector<std::string> keys;
            std::string list;
            for (const auto& [known, unused] : readers) {
                keys.push_back(known);
                list += (list.empty() ? "" : ", ") + known;
            }
            Refuse(
                entry.first, "expected a key of " + what + " (" + list + "), got '" + key + "'" +
                                 NearestNames(key, keys));
        }
        if (!seen.insert(key).second) {
            Refuse(entry.first, "expected each key once, got '" + key + "' again");
        }
        reader->second(entry.second);
    }
}

std::string YamlFile::Text(const YAML::Node& node, const std::string& expected) const {
    if (!node.IsScalar()) {
        RefuseValue(node, expected);
    }
    return node.Scalar();
}

std::int64_t YamlFile::Number(
    const YAML::Node& node, const std::string& what, std::int64_t lowest,
    std::int64_t highest) const {
    const auto number = node.IsScalar() ? ParseNumber<std::int64_t>(node.Scalar()) : std::nullopt;
    if (!number || *number < lowest || *number > highest) {
        RefuseValue(node, what + ", " + std::to_string(lowest) + " to " + std::to_string(highest));
    }
    return *number;
}

void YamlFile::RequireMap(const YAML::Node& node, const std::string& expected) const {
    if (!node.IsMap()) {
        RefuseValue(node, expected);
    }
}

void YamlFile::RequireList(const YAML::Node& node, const std::string& expected) const {
    if (!node.IsSequence()) {
        RefuseValue(node, expected);
    }
}

void YamlFile::RefuseValue(const YAML::Node& node, const std::string& expected) const {
    const std::string got = node.IsScalar()     ? "'" + node.Scalar() + "'"
                            : node.IsMap()      ? "a map"
                            : node.IsSequence() ? "a list"
                                                : "nothing";
    Refuse(node, "expected " + expected + ", got " + got);
}

std::string YamlFile::Place(const YAML::Node& node) const {
    // An empty file has no lines.
    return m_Path + ':' + std::to_string(std::max(node.Mark().line + 1, 1));
}

void YamlFile::Refuse(const YAML::Node& node, const std::string& text) const {
    throw HostError(EXIT_WRONG_USE, Place(node) + ": " + text);
}

void YamlFile::Explain(const YAML::Node& node, const std::function<void()>& work) const {
    try {
        work();
    } catch (const HostError& e) {
        Refuse(node, e.what());
    }
}
