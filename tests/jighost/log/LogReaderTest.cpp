// jighost log, held against logs written here by hand: none of them came from the module.
#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>

#include "jighost/log/LogReader.h"
#include "platform/Program.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::HasSubstr;

/// What a reader makes of a log that comes in pieces of this size: a line for each operation, two
/// blanks for each step of depth.
static std::string Read(const std::string& log, std::size_t pieceSize = 7) {
    std::string text;
    LogReader reader([&text](auto operations) {
        for (const LOGGED_OPERATION& operation : operations) {
            text += std::string(2 * operation.depth, ' ') + operation.name + ' ' +
                    (operation.result ? std::to_string(*operation.result) : "open") +
                    (operation.error.empty() ? "" : " " + operation.error) +
                    (operation.bInterleaved ? " interleaved" : "") +
                    (operation.bOpened ? "" : " unopened") + '\n';
        }
    });
    for (std::size_t start = 0; start < log.size(); start += pieceSize) {
        reader.Add(std::string_view(log).substr(start, pieceSize));
    }
    reader.End();
    return text;
}

TEST(JighostLogTest, NestedOperationsStandBehindTheirOuterOneWithTheirOwnErrors) {
    const std::string log =
        "12:00 [----]\n12:00 [FUNC] SetFilePrefix\n"
        "12:00 [----]\n12:00 [FUNC] GetBodyID\n"
        "12:00 [ERR!] - [VALU] pBodyID\n12:00 [FUNC] GetBodyID - 3\n"
        "12:00 [ERR!] - [FUNC] GetBodyID\n12:00 [FUNC] SetFilePrefix - 3\n"
        "12:01 [----]\n12:01 [FUNC] MPUReset\n"
        "[ERR!] UnExpected Exception\n12:01 [FUNC] MPUReset - 33\n";
    EXPECT_EQ(
        Read(log),
        "SetFilePrefix 3 [FUNC] GetBodyID\n  GetBodyID 3 [VALU] pBodyID\n"
        "MPUReset 33 UnExpected Exception\n");
}

TEST(JighostLogTest, ClosingLinesAreToldFromValues) {
    EXPECT_EQ(
        Read("[FUNC] _GetState\n[FUNC] State - -1\n[FUNC] _GetState - 0\n"
             "[FUNC] GetOwnerName\n[FUNC] pOwnerName - GetOwnerName\n[FUNC] GetOwnerName - 0\n"
             "[FUNC] SetTimeCode\n[FUNC] TIMECODE_T           - 4\n[FUNC] SetTimeCode - 0\n"
             "[FUNC] SetSoundVolume\n[VALU] SetSoundVolume - 1\n"
             "[FUNC] _OutputColorBarChart\n[VALU] _OutputColorBarChart - 0\n"
             "[FUNC] SaveDateDisplayFormat\n[FUNC] SaveDateDisplayFormatt - 0\n"
             "[FUNC] DebugPrintABoardEepromData\n[FUNC] DebugPrintABoardEepromData - 20c1\n"),
        "_GetState 0\nGetOwnerName 0\nSetTimeCode 0\nSetSoundVolume 1\n_OutputColorBarChart 0\n"
        "SaveDateDisplayFormat 0\nDebugPrintABoardEepromData 8385\n");
}

TEST(JighostLogTest, RubbishAndMissingLinesLoseNothingElse) {
    const std::string rubbish = std::string("\0\xff[[FUNC] [FUNC", 15) + std::string(70000, '[');
    const std::string log = "GetTimeZone - 0\r\n[FUNC] GetLanguage - 1\r\n" + rubbish +
                            "\n2026 [FUNC] GetBodyID\r\n" + rubbish +
                            "\r\n[FUNC] GetBodyID - x\r\n2026 [FUNC] GetBodyID - 0\r\n"
                            "[FUNC] Outer\r\n[FUNC] Inner\r\n[ERR!] - lost\r\n[FUNC] Outer - 1\r\n"
                            "[FUNC] Killed\r\n[CMNT]  TuneBench.t460 Initialize\r\n"
                            "[FUNC] CutOff\r\n[FUNC] CutOff - 1";
    const std::string expected =
        "GetLanguage 1 unopened\nGetBodyID 0\nOuter 1 lost\n  Inner open\nKilled open\n"
        "CutOff open\n";
    for (const std::size_t pieceSize : {std::size_t{1}, std::size_t{1000}, log.size()}) {
        EXPECT_EQ(Read(log, pieceSize), expected) << pieceSize;
    }
}

// T stands for a time, which the camera link gives in a form of its own.
static std::string Timed(std::string text) {
    const std::string time = "2026/11/22 20:10:29.123 ";
    for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at)) {
        text.replace(at, 1, time);
        at += time.size();
    }
    return text;
}

static const std::string FIRST = "@[----]\n@[FUNC] GetLanguage\n@[FUNC] GetLanguage - 0\n";
static const std::string OPENED = FIRST + "@[----]\n@[FUNC] SetBodyID\n";

TEST(JighostLogTest, LineThatBeginsWithinAnotherOneIsALine) {
    // A full disk cut off a value, an error, a result that may have lacked digits, a name.
    const std::string log =
        OPENED + "@[VALU] Coun@[----]\n@[FUNC] MPUReset\n" +
        "@[ERR!] - [EVNT] nHD@[FUNC] MPUReset - 3\n" +
        "@[FUNC] SetBodyID - 20@[----]\n@[FUNC] GetBodyI@[FUNC] GetBodyID - 0\n" +
        "@[----]\n@[FUNC] GetTimeZone@[FUNC] GetTimeZone - 0\n" +
        // A row of bytes, written byte by byte, and another host's lines in it.
        "@[----]\n@[FUNC] GetIcuFirmwareVersion\n@[VALU] Data[ 00000000 ] -  31 32 " +
        "@[----]\n@[FUNC] GetSensorNumber\n33 @[FUNC] GetSensorNumber - 0\n34 \n" +
        "@[FUNC] GetIcuFirmwareVersion - 0\n";
    EXPECT_EQ(
        Read(Timed(log)),
        "GetLanguage 0\nSetBodyID open interleaved\nMPUReset 3 [EVNT] nHD\n"
        "GetBodyID 0 unopened\nGetTimeZone 0\nGetIcuFirmwareVersion 0\nGetSensorNumber 0\n");
}

TEST(JighostLogTest, LinesOfAnErrorTextAreNoLinesOfTheLog) {
    const std::string closing = "\n@[FUNC] SetBodyID - 3\n";
    const std::string next = "@[----]\n@[FUNC] GetBodyID\n@[FUNC] GetBodyID - 0\n";
    const std::string texts[] = {
        "a\nb",
        "a\n[FUNC] SetBodyID - 5\n[----]\n[FUNC] Forged\n[ERR!] - b",
        "a\n@[FUNC] SetBodyID - 0",
        "a\n@[FUNC] SetBodyID - 5\nb\n@[FUNC] SetBodyID - 0\n",
        "a\n@[FUNC] SetBodyID - 0\n@[----]\n@[FUNC] SetBodyID",
        "a\n@[FUNC] SetBodyID - 0\n@[----]\n@[FUNC] MPUReset\n@[FUNC] MPUReset - 0",
        "a\n@[CMNT]  TuneBench.t460 Initialize\n@[FUNC] GetLanguage - 5",
    };
    for (const std::string& text : texts) {
        std::string error = Timed(text);
        error.erase(error.find_last_not_of('\n') + 1);
        const std::size_t second = error.find("\n[ERR!] - ");
        if (second != std::string::npos) {
            error.replace(second, 10, "; ");
        }
        EXPECT_EQ(
            Read(Timed(OPENED + "@[ERR!] - " + text + closing + next)),
            "GetLanguage 0\nSetBodyID 3 " + error + "\nGetBodyID 0\n");
    }
}

TEST(JighostLogTest, ValueTextsWithLineEndsCloseNothing) {
    EXPECT_EQ(
        Read(Timed(
            FIRST + "@[----]\n@[FUNC] GetOwnerName\n@[FUNC] pOwnerName - x\n"
                    "[FUNC] GetOwnerName - 5\n[----]\n[FUNC] Forged\n@[FUNC] GetOwnerName - 0\n")),
        "GetLanguage 0\nGetOwnerName 0\n");
}

// The prefixes fill the module's buffer, and the closing line is lost.
TEST(JighostLogTest, OperationWithHugePrefixesIsShownWithoutItsClosingLine) {
    const std::string huge(1'030'000, 'x');
    const std::string log = huge + " [----]\n" + huge.substr(0, 1'000'000) + " [FUNC] SetBodyID\n" +
                            huge + " [ERR!] - lost\n" + huge.substr(0, 1'017'900) +
                            "@[----]\n@[FUNC] GetBodyID\n" + "@[FUNC] GetBodyID - 0\n";
    for (const std::size_t pieceSize : {std::size_t{4096}, log.size()}) {
        EXPECT_EQ(Read(Timed(log), pieceSize), "SetBodyID open lost\nGetBodyID 0\n");
    }
}

// The middle of such a line is left out, and what is left is no line of its own.
TEST(JighostLogTest, LineThatIsTooLongAndEndsLikeAClosingLineClosesNothing) {
    const std::string huge(200'000, 'x');
    const std::string log = "[FUNC] GetBodyID\n[VALU] " + huge +
                            "[FUNC] GetBodyID - 5\n[FUNC] GetBodyID - 0\n[FUNC] SaveBodyID\n"
                            "[ERR!] - " +
                            huge + "\n[FUNC] SaveBodyID - 3\n";
    for (const std::size_t pieceSize : {std::size_t{4096}, log.size()}) {
        EXPECT_EQ(
            Read(log, pieceSize), "GetBodyID 0\nSaveBodyID 3 " + huge.substr(0, 500) + "...\n");
    }
}

TEST(JighostLogTest, ErrorTextEndsWithItsLimits) {
    const auto read = [](const std::string& text) {
        return Read("[FUNC] SetBodyID\n[ERR!] - E\n" + text + "[FUNC] SetBodyID - 3\n", 4096);
    };
    std::string lines;
    std::string told;
    for (int line = 0; line < 31; ++line) {
        lines += "x\n";
        told += "\nx";
    }
    EXPECT_EQ(read(lines), "SetBodyID 3 E" + told + '\n');
    EXPECT_EQ(read(lines + "x\n"), "SetBodyID 3 E\n") << "one line more";
    const std::string huge = std::string(120'000, 'x') + '\n';
    EXPECT_EQ(read(huge + huge), "SetBodyID 3 E\n" + huge.substr(0, 498) + "...\n");
    EXPECT_EQ(read(huge + huge + huge), "SetBodyID 3 E\n") << "more than 262,144 bytes";
}

// --- Several hosts ---

namespace {

/// A host's next writes, each of which lands in the log as a whole, and what came of its runs.
struct WRITER {
    std::vector<std::string> writes;
    std::vector<std::string> rows;
};

WRITER MakeWriter(std::mt19937& random, std::size_t operations) {
    static const char* const NAMES[] = {
        "GetBodyID", "SetFilePrefix", "SetOwnerName", "GetIcuFirmwareVersion"};
    WRITER writer = {.writes = {"@[CMNT]  TuneBench.t460 Initialize\n"}, .rows = {}};
    const auto open = [&](const std::string& name) {
        writer.writes.push_back("@[----]\n@[FUNC] " + name + "\n");
    };
    const auto close = [&](const std::string& name, bool bFailed) {
        const std::string code = std::to_string(bFailed ? 2 * (random() % 9) + 1 : 0);
        const std::string error = bFailed ? "E" + std::to_string(random()) : "";
        writer.writes.push_back(
            (bFailed ? "@[ERR!] - " + error + '\n' : "") + "@[FUNC] " + name + " - " + code + '\n');
        writer.rows.push_back(name + ' ' + code + (bFailed ? ' ' + error : ""));
    };
    for (std::size_t i = 0; i < operations; ++i) {
        const std::string name = NAMES[random() % std::size(NAMES)];
        open(name);
        if (name == "SetFilePrefix") {
            open("GetBodyID");
            close("GetBodyID", false);
        }
        if (name == "GetIcuFirmwareVersion") {  // with a row that is written byte by byte
            open("DebugPrintDumpMemory");
            writer.writes.insert(
                writer.writes.end(), {"@[VALU] Data[ 00000000 ] -  30 ", "31 ", "\n"});
            close("DebugPrintDumpMemory", false);
        }
        writer.writes.push_back("@[VALU] Value - " + std::to_string(i) + '\n');
        close(name, random() % 8 == 0);
    }
    return writer;
}

}  // namespace

TEST(JighostLogTest, OperationsOfSeveralHostsAllHaveTheirOwnResults) {
    std::mt19937 random(4711);
    for (std::size_t hosts = 2; hosts <= 5; ++hosts) {
        std::vector<WRITER> writers;
        std::vector<std::string> rows;
        for (std::size_t i = 0; i < hosts; ++i) {
            writers.push_back(MakeWriter(random, 500));
            rows.insert(rows.end(), writers.back().rows.begin(), writers.back().rows.end());
            std::reverse(writers.back().writes.begin(), writers.back().writes.end());
        }
        std::string log = FIRST;
        rows.push_back("GetLanguage 0");
        while (!writers.empty()) {
            const auto writer =
                writers.begin() + static_cast<std::ptrdiff_t>(random() % writers.size());
            log += writer->writes.back();
            writer->writes.pop_back();
            if (writer->writes.empty()) {
                writers.erase(writer);
            }
        }
        std::vector<std::string> read;
        std::istringstream lines(Read(Timed(log), 4096));
        for (std::string line; std::getline(lines, line);) {
            line.erase(0, line.find_first_not_of(' '));
            read.push_back(line.substr(0, line.find(" interleaved")));
        }
        std::sort(read.begin(), read.end());
        std::sort(rows.begin(), rows.end());
        EXPECT_EQ(read, rows);
    }
}

TEST(JighostLogTest, KilledHostAmongOthersLeavesAnOperationThatIsNotToldAsFailed) {
    const std::string killed = OPENED + "@[----]\n@[FUNC] GetSensorNumber\n";
    const std::string other = "@[----]\n@[FUNC] GetBodyID\n";
    // Another host was there at the same time.
    EXPECT_EQ(
        Read(Timed(killed + other + "@[FUNC] GetSensorNumber - 0\n@[FUNC] GetBodyID - 0\n")),
        "GetLanguage 0\nSetBodyID open interleaved\nGetSensorNumber 0\nGetBodyID 0\n");
    // Another one was started behind it.
    EXPECT_EQ(
        Read(Timed(
            OPENED + "@[CMNT]  TuneBench.t460 Initialize\n" + other + "@[FUNC] GetBodyID - 0\n")),
        "GetLanguage 0\nSetBodyID open\nGetBodyID 0\n");
    // Two were within the same operation, and which one failed can't be told.
    EXPECT_EQ(
        Read(Timed(
            FIRST + other + other + "@[ERR!] - a\n@[FUNC] GetBodyID - 3\n" +
            "@[FUNC] GetBodyID - 0\n")),
        "GetLanguage 0\nGetBodyID 0 interleaved\nGetBodyID 3 a interleaved\n");
}

TEST(JighostLogTest, OpeningsWithoutEndAreHandedOverInPieces) {
    std::size_t most = 0;
    std::size_t count = 0;
    LogReader reader([&](auto operations) {
        most = std::max(most, operations.size());
        count += operations.size();
    });
    for (int i = 0; i < 5000; ++i) {
        reader.Add("[FUNC] Lost\n");
    }
    reader.End();
    EXPECT_EQ(count, 5000U);
    EXPECT_LE(most, 1000U);
}

static const char LOG[] =
    "[FUNC] GetBodyID\n[FUNC] GetBodyID - 0\n[FUNC] SaveBodyID\n[ERR!] - [PROP] Save\n"
    "[FUNC] SaveBodyID - 8193\n[FUNC] GetBodyID\n[ERR!] - [VALU] pBodyID\n[FUNC] GetBodyID - 3\n";

TEST(JighostLogTest, ListAndSummaryFollowTheSelection) {
    const FreshFolder folder;
    WriteFile("JigDll.log", LOG);
    const JIGHOST_RUN failed = RunJighost({"log", "--failed", "--operation", "GetBodyID"});
    EXPECT_EQ(failed.exitCode, 0);
    EXPECT_EQ(CountLines(failed.output, "2 operations, 1 failed"), 1U) << failed.output;
    EXPECT_THAT(failed.output, Not(HasSubstr("SaveBodyID")));
    EXPECT_THAT(failed.output, Not(HasSubstr("\033")));
    EXPECT_EQ(
        RunJighost({"log", "--json", "--operation", "SaveBodyID", "JigDll.log"}).output,
        "{\"format\":1}\n"
        "{\"operation\":\"SaveBodyID\",\"depth\":0,\"begin\":\"\",\"end\":\"\",\"result\":8193,"
        "\"result_name\":\"event or link code\",\"error\":\"[PROP] Save\",\"interleaved\":false}\n"
        "{\"summary\":{\"operations\":1,\"failed\":1,\"interleaved\":0,\"failures\":[{"
        "\"operation\":\"SaveBodyID\",\"result\":8193,\"result_name\":\"event or link code\","
        "\"error\":\"[PROP] Save\",\"count\":1}],\"other_failures\":0}}\n");
}

TEST(JighostLogTest, WhatIsNoLogOrNoOperationIsRefused) {
    const FreshFolder folder;
    WriteFile("JigDll.log", LOG);
    WriteFile("notes.txt", "[1] a note\n");
    WriteFile("empty.log", "");
    std::vector<std::pair<std::vector<std::string>, std::string>> refusals = {
        {{"none.log"}, "can't open none.log: No such file"},
        {{"."}, ". is no file"},
        {{"notes.txt"}, "notes.txt is no log of the module"},
        {{"empty.log"}, "empty.log is no log of the module"},
        {{"--operation", "GetBodyIDs"}, "did you mean 'GetBodyID'"},
        {{"--operation", "GetBodyIDs", "--follow"}, "did you mean 'GetBodyID'"},
    };
    if (!IS_WINDOWS) {
        refusals.push_back({{"/dev/zero"}, "/dev/zero is no file"});
    }
    for (const auto& [arguments, message] : refusals) {
        std::vector<std::string> command = {"log"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        const JIGHOST_RUN run = RunJighost(command);
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_THAT(run.errors, HasSubstr(message));
        EXPECT_EQ(run.output, "");
    }
    // By its registered name, too.
    WriteFile("JigDll.log", "[FUNC] DisableAF\n[FUNC] DisableAF - 0\n");
    EXPECT_THAT(
        RunJighost({"log", "--operation", "DisableAf"}).output,
        HasSubstr("1 operations, 0 failed"));
}

TEST(JighostLogTest, FollowsAcrossDeletedRenamedAndNewFiles) {
    const FreshFolder folder;
    WriteFile("JigDll.log", "[FUNC] First\n[FUNC] First - 0\n[FUNC] Across\n");
    Process jighost(JighostFile(), {"log", "--follow"});
    EXPECT_THAT(jighost.ReadLine().value_or(""), HasSubstr("First"));
    std::filesystem::remove("JigDll.log");
    // Longer than the one before, so that only the file itself tells that it is another one.
    WriteFile("New.log", std::string(100, '-') + "\n[FUNC] Across - 1\n[FUNC] Second\n");
    EXPECT_TRUE(IsRenamed("New.log", "JigDll.log"));
    EXPECT_THAT(jighost.ReadLine().value_or(""), HasSubstr("Across"));
    std::ofstream("JigDll.log", std::ios::app) << "[FUNC] Second - 0\n";
    EXPECT_THAT(jighost.ReadLine().value_or(""), HasSubstr("Second"));
    // Written ahead of the renaming, and read behind it or not.
    std::ofstream("JigDll.log", std::ios::app) << "[FUNC] Third\n[FUNC] Third - 0\n";
    EXPECT_TRUE(IsRenamed("JigDll.log", "Old.log"));
    WriteFile("JigDll.log", "[FUNC] Fourth\n[FUNC] Fourth - 0\n");
    EXPECT_THAT(jighost.ReadLine().value_or(""), HasSubstr("Third"));
    EXPECT_THAT(jighost.ReadLine().value_or(""), HasSubstr("Fourth"));
    jighost.Kill();
}
