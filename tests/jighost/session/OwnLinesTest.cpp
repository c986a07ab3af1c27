// Whose the lines of a log are that several processes write to.
#include "jighost/session/OwnLines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

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

}  // namespace
