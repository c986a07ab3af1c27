// The schema that editors take, held against what the reader of sequences takes.
#include <filesystem>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <sstream>

#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

namespace {

using Words = std::set<std::string>;

/// What the reader names, between brackets, when it refuses a word.
Words NamedByReader(const std::string& text) {
    WriteFile("wrong.yaml", "format: 2\n" + text);
    const std::string errors = RunLine("sequence --check wrong.yaml").errors;
    const std::size_t begin = errors.find('(') + 1;
    std::istringstream list(errors.substr(begin, errors.find("), got 'zzz'") - begin));
    Words words;
    for (std::string word; std::getline(list, word, ',');) {
        words.insert(word.substr(word.find_first_not_of(' ')));
    }
    return words;
}

Words Keys(const nlohmann::json& object) {
    Words keys;
    for (const auto& [key, value] : object.at("properties").items()) {
        keys.insert(key);
    }
    return keys;
}

TEST_F(JighostTest, SchemaHasTheKeysAndTypesThatTheReaderTakes) {
    const auto schema = nlohmann::json::parse(
        ReadFile(std::filesystem::path(SEQUENCE_FOLDER) / "sequence.schema.json"));
    const auto& definitions = schema["definitions"];
    EXPECT_EQ(Keys(schema), NamedByReader("zzz: 1\nsteps: [{operation: GetBodyID}]\n"));
    const std::pair<const char*, std::string> maps[] = {
        {"step", "steps: [{operation: GetBodyID, zzz: 1}]\n"},
        {"measurement", "steps: [{operation: GetBodyID, measure: [{zzz: 1}]}]\n"},
        {"question", "steps: [{ask: a, zzz: 1}]\n"},
        {"include", "steps: [{include: a.yaml, zzz: 1}]\n"},
        {"repeat", "steps: [{repeat: 1, zzz: 1}]\n"},
        {"parameter", "parameters: {a: {zzz: 1}}\nsteps: [{operation: GetBodyID}]\n"},
    };
    for (const auto& [pszName, text] : maps) {
        EXPECT_EQ(Keys(definitions[pszName]), NamedByReader(text)) << pszName;
        EXPECT_EQ(definitions[pszName]["additionalProperties"], false) << pszName;
    }
    EXPECT_EQ(
        definitions["parameter"]["properties"]["type"]["enum"].get<Words>(),
        NamedByReader("parameters: {a: {type: zzz}}\nsteps: [{operation: GetBodyID}]\n"));
}

TEST_F(JighostTest, SchemaTakesTheFormsThatTheReaderTakes) {
    const auto step = nlohmann::json::parse(ReadFile(
        std::filesystem::path(SEQUENCE_FOLDER) / "sequence.schema.json"))["definitions"]["step"];
    const std::regex form(step["properties"]["on_unexpected"]["pattern"].get<std::string>());
    const std::pair<const char*, bool> texts[] = {
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
    for (const auto& [pszText, bTaken] : texts) {
        WriteFile(
            "form.yaml", "format: 2\nsteps: [{operation: GetBodyID, on_unexpected: \"" +
                             std::string(pszText) + "\"}]\n");
        EXPECT_EQ(RunLine("sequence --check form.yaml").exitCode, bTaken ? 0 : 2) << pszText;
        EXPECT_EQ(std::regex_match(pszText, form), bTaken) << pszText;
    }
}

}  // namespace
