// Whose the lines of a log are that several processes write to.
#include "jighost/session/OwnLines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

/// The process's lines behind '+', and those in doubt behind '?'.
Texts Told(const OwnLines& lines) {
    Texts told;
    for (std::size_t place = 0; place < lines.Count(); ++place) {
        if (lines.Owner(place) != OWNER::ANOTHER) {
            told.push_back((lines.Owner(place) == OWNER::UNKNOWN ? '?' : '+') + lines.Text(place));
        }
    }
    return told;
}

Texts ToldOf(const Texts& prefixes, const Texts& added) {
    OwnLines lines;
    for (const std::string& prefix : prefixes) {
        lines.Expect(prefix);
    }
    for (const std::string& line : added) {
        lines.Add(line);
    }
    return Told(lines);
}

TEST(JighostOwnLinesTest, LineIsThisProcesssByThePrefixThatItGave) {
    // Lines as they come, each behind what it must be told with; another process's behind '-'.
    const std::pair<Texts, Texts> cases[] = {
        // Alone: texts with lines of their own, lines without a tag or a prefix.
        {{"09:01 ", "09:01 ", "09:02 "},
         {"+09:01 [----]", "+09:01 BodyID - 5", "+b [x", "+09:02 [VALU] a",
          "+[VALU] pszFileName - c"}},
        // Another one in another millisecond, with such lines too.
        {{"09:01 ", "09:02 "},
         {"-rest of a line", "+09:01 [----]", "-09:03 [ERR!] - theirs", "-more",
          "-09:03 BodyID - 7", "+09:02 [FUNC] A - 0", "-09:03 [FUNC] A - 3"}},
        // Another one in the same millisecond: all of that one are in doubt.
        {{"09:01 ", "09:02 "},
         {"+09:01 [----]", "?09:02 [FUNC] A - 0", "?09:02 [ERR!] - theirs", "?more"}},
        // Lines without a prefix that come first in what a process hands over, and others.
        {{"09:01 ", "09:02 "},
         {"+09:01 [VALU] Hd", "+[ERR!] HD_Count is Over", "-[ERR!] - theirs", "-x",
          "-09:03 [FUNC] A - 3", "+[ERR!] - ours", "+y", "+09:02 [FUNC] A - 3"}},
        {{"09:01 "},
         {"-09:03 [FUNC] A", "+[VALU] CARD Slot1 : 1", "+[VALU] CARD Slot2 : 0",
          "+09:01 [FUNC] A - 0"}},
        // A count of more and more digits.
        {{"9 ", "10 ", "100 "}, {"+9 [----]", "+10 [FUNC] A", "+100 [FUNC] A - 0"}},
        {{}, {"-09:01 [----]", "-more"}},
        // A link that gives all processes the same.
        {{"> ", "> "}, {"?> [----]", "?> [FUNC] A", "?> [----]"}},
    };
    for (auto [prefixes, told] : cases) {
        Texts added;
        for (const std::string& line : told) {
            added.push_back(line.substr(1));
        }
        std::erase_if(told, [](const std::string& line) { return line[0] == '-'; });
        EXPECT_EQ(ToldOf(prefixes, added), told);
    }
}

TEST(JighostOwnLinesTest, RowOfBytesIsHandedOverByteByByteWithOthersLinesInBetween) {
    EXPECT_EQ(
        ToldOf(
            {"09:01 ", "09:02 "},
            {"09:01 [VALU] Data[ 00 ] -  31 09:03 [ERR!] - theirs", "32 09:03 [----]",
             "09:03 [VALU] Data[ 00 ] -  31 09:02 [FUNC] A - 0"}),
        (Texts{"+09:01 [VALU] Data[ 00 ] -  31 ", "+09:02 [FUNC] A - 0"}));
}

// A routine that throws leaves its lines to whoever hands over next.
TEST(JighostOwnLinesTest, LineMayComeWithALaterOperationButNoneComesTwice) {
    OwnLines lines;
    lines.Expect("09:01 ");
    lines.Expect("09:01 ");
    lines.Add("09:01 [----]");
    lines.Clear();
    lines.Add("09:01 [VALU] late");
    EXPECT_EQ(Told(lines), Texts{"+09:01 [VALU] late"});
    lines.Clear();
    lines.Add("09:01 [ERR!] - theirs");
    EXPECT_EQ(Told(lines), Texts{});
}

}  // namespace
