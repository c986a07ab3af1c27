// Whose the lines of a log are that several processes write to, and what a run tells of such a log.
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

#include "jighost/session/OwnLines.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::HasSubstr;
using testing::Not;

namespace {

/// The process's lines behind '+', and those in doubt behind '?'.
std::vector<std::string> Told(const OwnLines& lines) {
    std::vector<std::string> told;
    for (std::size_t place = 0; place < lines.Count(); ++place) {
        if (lines.Owner(place) != OWNER::ANOTHER) {
            told.push_back((lines.Owner(place) == OWNER::UNKNOWN ? '?' : '+') + lines.Text(place));
        }
    }
    return told;
}

TEST(JighostOwnLinesTest, LineIsThisProcesssByThePrefixThatItGave) {
    struct CASE {
        std::vector<std::string> given;
        std::vector<std::string> lines;
        std::vector<std::string> told;
    };
    const std::string first = "09:01 ";
    const std::string second = "09:02 ";
    const std::string foreign = "09:03 ";
    const CASE cases[] = {
        // Alone: texts with lines of their own, lines without a tag or a prefix.
        {{first, first, second},
         {"09:01 [----]", "09:01 BodyID - 5", "b [x", "09:02 [VALU] a", "[VALU] pszFileName - c"},
         {"+09:01 [----]", "+09:01 BodyID - 5", "+b [x", "+09:02 [VALU] a",
          "+[VALU] pszFileName - c"}},
        // Another one in another millisecond, with such lines too.
        {{first, second},
         {"rest of a line", "09:01 [----]", "09:03 [ERR!] - theirs", "more", "09:03 BodyID - 7",
          "09:02 [FUNC] A - 0", "09:03 [FUNC] A - 3"},
         {"+09:01 [----]", "+09:02 [FUNC] A - 0"}},
        // Another one in the same millisecond: all of that one are in doubt.
        {{first, second},
         {"09:01 [----]", "09:02 [FUNC] A - 0", "09:02 [ERR!] - theirs", "more"},
         {"+09:01 [----]", "?09:02 [FUNC] A - 0", "?09:02 [ERR!] - theirs", "?more"}},
        // Lines without a prefix that come first in what a process hands over, and others.
        {{first, second},
         {"09:01 [VALU] Hd", "[ERR!] HD_Count is Over", "[ERR!] - theirs", "x",
          "09:03 [FUNC] A - 3", "[ERR!] - ours", "y", "09:02 [FUNC] A - 3"},
         {"+09:01 [VALU] Hd", "+[ERR!] HD_Count is Over", "+[ERR!] - ours", "+y",
          "+09:02 [FUNC] A - 3"}},
        {{first},
         {"09:03 [FUNC] A", "[VALU] CARD Slot1 : 1", "[VALU] CARD Slot2 : 0", "09:01 [FUNC] A - 0"},
         {"+[VALU] CARD Slot1 : 1", "+[VALU] CARD Slot2 : 0", "+09:01 [FUNC] A - 0"}},
        // A row of bytes is handed over byte by byte, others' lines in between.
        {{first, second},
         {"09:01 [VALU] Data[ 00 ] -  31 09:03 [ERR!] - theirs", "32 09:03 [----]",
          "09:03 [VALU] Data[ 00 ] -  31 09:02 [FUNC] A - 0"},
         {"+09:01 [VALU] Data[ 00 ] -  31 ", "+09:02 [FUNC] A - 0"}},
        // A count of more and more digits.
        {{"9 ", "10 ", "100 "},
         {"9 [----]", "10 [FUNC] A", "100 [FUNC] A - 0"},
         {"+9 [----]", "+10 [FUNC] A", "+100 [FUNC] A - 0"}},
        {{}, {"09:01 [----]", "more"}, {}},
        // A link that gives all processes the same.
        {{"> ", "> "},
         {"> [----]", "> [FUNC] A", "> [----]"},
         {"?> [----]", "?> [FUNC] A", "?> [----]"}},
    };
    for (const CASE& each : cases) {
        OwnLines lines;
        for (const std::string& prefix : each.given) {
            lines.Expect(prefix);
        }
        for (const std::string& line : each.lines) {
            lines.Add(line);
        }
        EXPECT_EQ(Told(lines), each.told);
    }
}

// A routine that throws leaves its lines to whoever hands over next.
TEST(JighostOwnLinesTest, LineMayComeWithALaterOperationButNoneComesTwice) {
    OwnLines lines;
    lines.Expect("09:01 ");
    lines.Expect("09:01 ");
    lines.Add("09:01 [----]");
    lines.Clear();
    lines.Add("09:01 [VALU] late");
    EXPECT_EQ(Told(lines), std::vector<std::string>{"+09:01 [VALU] late"});
    lines.Clear();
    lines.Add("09:01 [ERR!] - theirs");
    EXPECT_EQ(Told(lines), std::vector<std::string>{});
}

// --- Hosts in one directory ---

const std::string FAULT = "SetFilePrefix:2=0x2001";

std::string FilePrefixSteps(int count) {
    std::string text = "format: 1\nsteps:\n";
    while (count-- > 0) {
        text += "  - {operation: SetFilePrefix, on_unexpected: continue}\n";
    }
    return text;
}

/// What one of them has recorded; `lines` of each run whose log nobody else has written into.
void ExpectOwnErrorsAlone(const std::string& path, const std::string& error, std::size_t lines) {
    std::size_t whole = 0;
    const auto record = nlohmann::json::parse(ReadFile(path));
    for (const nlohmann::json& step : record.at("steps")) {
        const auto log = step.at("log").get<std::vector<std::string>>();
        const auto interleaved = step.at("interleaved").get<std::vector<std::string>>();
        EXPECT_EQ(
            step.at("error").get<std::string>().find(FAULT) == std::string::npos, error.empty());
        EXPECT_LE(log.size(), lines);
        EXPECT_GE(log.size() + interleaved.size(), lines) << "no line is lost";
        if (error.empty()) {
            EXPECT_THAT(log, testing::Each(Not(HasSubstr("[ERR!]"))));
            EXPECT_EQ(step.at("error"), "");
        } else if (interleaved.empty()) {
            EXPECT_EQ(step.at("error"), error);
        }
        whole += log.size() == lines ? 1U : 0U;
    }
    EXPECT_GT(whole, 0U);
}

/// The lines of a trace's log that tell an error and are not said to be interleaved.
std::set<std::string> TracedErrors(const std::string& path) {
    std::set<std::string> own;
    std::set<std::string> interleaved;
    std::istringstream trace(ReadFile(path));
    for (std::string text; std::getline(trace, text);) {
        const auto entry = nlohmann::json::parse(text);
        if (text.find("[ERR!]") != std::string::npos && entry.value("entry", "") == "log") {
            (entry.at("interleaved") ? interleaved : own).insert(entry.at("line"));
        }
    }
    std::erase_if(own, [&](const std::string& line) { return interleaved.contains(line); });
    return own;
}

TEST_F(JighostTest, HostsInOneDirectoryTakeNoLinesOfEachOther) {
    WriteFile("sequence.yaml", FilePrefixSteps(500));
    const std::vector<JIGHOST_RUN> runs = RunAtOnce(
        {"sequence sequence.yaml --record bad.json --trace bad.jsonl --fault " + FAULT,
         "sequence sequence.yaml --record good.json --trace good.jsonl"});
    EXPECT_EQ(runs[0].exitCode, 4);
    EXPECT_EQ(runs[1].exitCode, 0);
    ExpectOwnErrorsAlone("good.json", "", 10);
    ExpectOwnErrorsAlone("bad.json", "[EVNT] --fault " + FAULT, 11);
    EXPECT_EQ(TracedErrors("good.jsonl"), std::set<std::string>{});
    EXPECT_NE(TracedErrors("bad.jsonl"), std::set<std::string>{});
}

}  // namespace
