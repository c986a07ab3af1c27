// The schema that editors take, held against what the reader of sequences takes.
#include <filesystem>
#include <regex>
#include <set>
#include <sstream>

#include "tests/support/SupportJighost.h"
#include "tests/support/SupportJson.h"

namespace {

using Words = std::set<std::string>;

/// What the reader names, between brackets, when it refuses the word zzz.
Words NamedByReader(const std::string& text) {
    WriteFile("wrong.yaml", "format: 2\n" + text);
    const std::string errors = RunLine("sequence --check wrong.yaml").errors;
    const std::size_t begin = errors.find('(') + 1;
    std::istringstream list(errors.substr(begin, errors.find("), got 'zzz'") - begin));
    Words words;
    for (std::string word; std::getline(list >> std::ws, word, ',');) {
        words.insert(word);
    }
    return words;
}

Words Keys(const Json& object) {
    Words keys;
    for (const auto& each : object.at("properties").items()) {
        keys.insert(each.key());
    }
    return keys;
}

class SchemaTest : public JighostTest {
  protected:
    const Json m_Schema =
        Json::parse(ReadFile(std::filesystem::path(SEQUENCE_FOLDER) / "sequence.schema.json"));
    const Json& m_Definitions = m_Schema["definitions"];
};

TEST_F(SchemaTest, HasTheKeysAndTypesThatTheReaderTakes) {
    EXPECT_EQ(Keys(m_Schema), NamedByReader("zzz: 1\nsteps: [{operation: GetBodyID}]\n"));
    const std::pair<const char*, std::string> maps[] = {
        {"step", "steps: [{operation: GetBodyID, zzz: 1}]\n"},
        {"measurement", "steps: [{operation: GetBodyID, measure: [{zzz: 1}]}]\n"},
        {"question", "steps: [{ask: a, zzz: 1}]\n"},
        {"include", "steps: [{include: a.yaml, zzz: 1}]\n"},
        {"repeat", "steps: [{repeat: 1, zzz: 1}]\n"},
        {"parameter", "parameters: {a: {zzz: 1}}\nsteps: [{operation: GetBodyID}]\n"},
    };
    for (const auto& [pszName, text] : maps) {
        EXPECT_EQ(Keys(m_Definitions[pszName]), NamedByReader(text)) << pszName;
        EXPECT_EQ(m_Definitions[pszName]["additionalProperties"], false) << pszName;
    }
    EXPECT_EQ(
        m_Definitions["parameter"]["properties"]["type"]["enum"].get<Words>(),
        NamedByReader("parameters: {a: {type: zzz}}\nsteps: [{operation: GetBodyID}]\n"));
}

TEST_F(SchemaTest, TakesTheFormsThatTheReaderTakes) {
    const std::regex form(
        m_Definitions["step"]["properties"]["on_unexpected"]["pattern"].get<std::string>());
    const std::pair<std::string, bool> texts[] = {
        {"stop", true},
        {"continue", true},
        {"retry 3", true},
        {"retry 3 after 500 ms", true},
        {"retry 1, then continue", true},
        {"retry 3 after 500 ms, then stop", true},
        {"retry", false},
        {"retry 3 after 5 s", false},
        {"retry 3,", false},
        {"then stop", false},
    };
    for (const auto& [text, bTaken] : texts) {
        WriteFile(
            "form.yaml",
            "format: 2\nsteps: [{operation: GetBodyID, on_unexpected: \"" + text + "\"}]\n");
        RunTo(bTaken ? 0 : 2, "sequence --check form.yaml");
        EXPECT_EQ(std::regex_match(text, form), bTaken) << text;
    }
}

}  // namespace
