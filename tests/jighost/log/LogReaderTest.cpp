// jighost log, held against logs written here by hand: none of them came from the module.
#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

#include "jighost/log/LogReader.h"
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
                    (operation.error.empty() ? "" : " " + operation.error) + '\n';
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
        "GetBodyID 0\nOuter 1 lost\n  Inner open\nKilled open\nCutOff open\n";
    for (const std::size_t pieceSize : {std::size_t{1}, std::size_t{1000}, log.size()}) {
        EXPECT_EQ(Read(log, pieceSize), expected) << pieceSize;
    }
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
        "\"result_name\":\"event or link code\",\"error\":\"[PROP] Save\"}\n"
        "{\"summary\":{\"operations\":1,\"failed\":1,\"failures\":[{\"result\":8193,"
        "\"result_name\":\"event or link code\",\"error\":\"[PROP] Save\",\"count\":1}],"
        "\"other_failures\":0}}\n");
    EXPECT_EQ(RunJighost({"log", "none.log"}).exitCode, 2);
}

TEST(JighostLogTest, FollowsAcrossADeletedAndANewFile) {
    const FreshFolder folder;
    WriteFile("JigDll.log", "[FUNC] First\n[FUNC] First - 0\n[FUNC] Across\n");
    Process jighost(JighostFile(), {"log", "--follow"});
    EXPECT_THAT(jighost.ReadLine().value_or(""), HasSubstr("First"));
    std::filesystem::remove("JigDll.log");
    // Longer than the one before, so that only the file itself tells that it is another one.
    WriteFile("New.log", std::string(100, '-') + "\n[FUNC] Across - 1\n[FUNC] Second\n");
    std::filesystem::rename("New.log", "JigDll.log");
    EXPECT_THAT(jighost.ReadLine().value_or(""), HasSubstr("Across"));
    std::ofstream("JigDll.log", std::ios::app) << "[FUNC] Second - 0\n";
    EXPECT_THAT(jighost.ReadLine().value_or(""), HasSubstr("Second"));
    jighost.Interrupt();
    EXPECT_EQ(jighost.ReadLine(), "");
    EXPECT_EQ(jighost.ReadLine(), "3 operations, 1 failed");
    EXPECT_EQ(jighost.Wait(), 130);
}
