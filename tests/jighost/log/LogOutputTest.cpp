// What jighost log prints of logs written here by hand, held against all of it.
#include <filesystem>

#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::HasSubstr;

namespace {

/// A failure within another one with an error of several lines, a closing line without an opening
/// one, an operation that was killed, and two hosts within one operation.
const char MIXED_LOG[] =
    "9:00 [----]\n9:00 [FUNC] SetFilePrefix\n9:00 [----]\n9:01 [FUNC] GetBodyID\n"
    "9:02 [ERR!] - [VALU] a\n  b\x1B\nc\n9:02 [FUNC] GetBodyID - 3\n"
    "9:03 [ERR!] - [FUNC] GetBodyID\n9:03 [FUNC] SetFilePrefix - 3\n"
    "9:04 [ERR!] - lost\n9:04 [FUNC] GetLanguage - 1\n"
    "9:05 [----]\n9:05 [FUNC] GetTimeZone\n9:05 [CMNT]  TuneBench.t460 Initialize\n"
    "9:06 [----]\n9:06 [FUNC] SaveBodyID\n9:06 [----]\n9:07 [FUNC] SaveBodyID\n"
    "9:08 [ERR!] - late\n9:08 [FUNC] SaveBodyID - 8193\n9:09 [FUNC] SaveBodyID - 0\n"
    "9:10 [----]\n9:10 [FUNC] SetBodyID\n9:10 [----]\n9:10 [FUNC] GetSensorNumber\n"
    "9:11 [FUNC] GetSensorNumber - 0\n";

TEST(JighostLogOutputTest, PeopleSeeEachOperationInItsPlaceAndAllFailuresCounted) {
    const FreshFolder folder;
    WriteFile("JigDll.log", MIXED_LOG);
    const JIGHOST_RUN run = RunJighost({"log"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(
        run.output,
        "9:00  SetFilePrefix                        RESULT_INVALID_PARAMETER (3)  [FUNC] "
        "GetBodyID\n"
        "9:01    GetBodyID                          RESULT_INVALID_PARAMETER (3)  [VALU] a\n"
        "    |   b\\x1b\n    | c\n"
        "9:04  GetLanguage                          RESULT_SYSTEM_ERROR (1)  lost  (no opening "
        "line)\n"
        "9:05  GetTimeZone                          no closing line\n"
        "9:06  SaveBodyID                           0\n"
        "9:07  SaveBodyID                           event or link code (8193)  late  "
        "(interleaved)\n"
        "9:10  SetBodyID                            interleaved\n"
        "9:10  GetSensorNumber                      0\n"
        "\n8 operations, 5 failed, 1 interleaved\n"
        "       1  GetBodyID                            RESULT_INVALID_PARAMETER (3)  [VALU] a\n"
        "    |   b\\x1b\n    | c\n"
        "       1  GetLanguage                          RESULT_SYSTEM_ERROR (1)  lost\n"
        "       1  GetTimeZone                          no closing line\n"
        "       1  SaveBodyID                           event or link code (8193)  late\n"
        "       1  SetFilePrefix                        RESULT_INVALID_PARAMETER (3)  [FUNC] "
        "GetBodyID\n");
}

TEST(JighostLogOutputTest, ListAndSummaryFollowTheSelection) {
    const FreshFolder folder;
    WriteFile("JigDll.log", MIXED_LOG);
    EXPECT_EQ(
        RunLine("log --failed --operation SaveBodyID JigDll.log").output,
        "9:07  SaveBodyID                           event or link code (8193)  late  "
        "(interleaved)\n"
        "\n2 operations, 1 failed\n"
        "       1  SaveBodyID                           event or link code (8193)  late\n");
    EXPECT_EQ(
        RunLine("log --json --failed --operation GetLanguage").output,
        "{\"format\":1}\n"
        "{\"operation\":\"GetLanguage\",\"depth\":0,\"begin\":null,\"end\":\"9:04\",\"result\":1,"
        "\"result_name\":\"RESULT_SYSTEM_ERROR\",\"error\":\"lost\",\"interleaved\":false}\n"
        "{\"summary\":{\"operations\":1,\"failed\":1,\"interleaved\":0,\"failures\":[{"
        "\"operation\":\"GetLanguage\",\"result\":1,\"result_name\":\"RESULT_SYSTEM_ERROR\","
        "\"error\":\"lost\",\"count\":1}],\"other_failures\":0}}\n");
    EXPECT_THAT(
        RunLine("log --json --operation GetTimeZone").output,
        HasSubstr("\"begin\":\"9:05\",\"end\":\"\",\"result\":null,\"result_name\":null,"
                  "\"error\":\"\""));
    // A name that no operation of the module has.
    WriteFile("JigDll.log", "[FUNC] Foreign\n[FUNC] Foreign - 0\n");
    const JIGHOST_RUN foreign = RunLine("log --operation Foreign");
    EXPECT_EQ(foreign.exitCode, 0);
    EXPECT_THAT(foreign.output, HasSubstr("\n1 operations, 0 failed\n"));
}

TEST(JighostLogOutputTest, FailuresBeyondAThousandKindsAreCountedTogether) {
    const FreshFolder folder;
    std::string log;
    for (int kind = 0; kind < 1002; ++kind) {
        log += "[FUNC] GetBodyID\n[ERR!] - E" + std::to_string(kind) + "\n[FUNC] GetBodyID - 3\n";
    }
    // One that is among the thousand.
    log += "[FUNC] GetBodyID\n[ERR!] - E999\n[FUNC] GetBodyID - 3\n";
    WriteFile("JigDll.log", log);
    const std::string output = RunJighost({"log"}).output;
    EXPECT_THAT(output, HasSubstr("\n1003 operations, 1003 failed\n"));
    EXPECT_THAT(
        output, HasSubstr("\n       2  GetBodyID                            "
                          "RESULT_INVALID_PARAMETER (3)  E999\n"));
    EXPECT_THAT(output, testing::EndsWith("\n  and 2 others\n"));
}

}  // namespace
