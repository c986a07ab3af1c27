// Recordings listed, shown, compared, run again in parts, and made into sequences.
#include <cstdint>
#include <sstream>

#include "jighost/output/Json.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

namespace {

class TraceCommandTest : public testing::Test {
  protected:
    inline static const std::string HEAD =
        R"({"format":2,"content":"jighost trace","started":"2026-11-22T21:06:59+01:00",)"
        R"("machine":"line3","process":4711,"program":"/opt/line/host",)";
    inline static const std::string START =
        HEAD + R"("continues":"","operations_before":0})" + '\n';
    inline static const std::string GAP =
        R"({"entry":"gap","entries":3,"at":1795381562000,"why":"No space left on device"})"
        "\n";

    /// Of an operation without a record; `at` in seconds behind 22:06:00 of the line's clock.
    static std::string Begin(int number, const std::string& name, std::int64_t at = 0) {
        return R"({"entry":"operation","operation":)" + std::to_string(number) + R"(,"name":")" +
               name + R"(","record":"","thread":1,"at":)" +
               std::to_string(1795381560123 + at * 1000) + "}\n";
    }

    static std::string End(int number, int result = 0) {
        return R"({"entry":"result","operation":)" + std::to_string(number) + R"(,"result":)" +
               std::to_string(result) +
               R"(,"record":"","time_ms":0.5})"
               "\n";
    }

    static std::string Call(
        int number, int call, const std::string& function, const std::string& id,
        const std::string& sent) {
        const std::string size = std::to_string((sent.size() + 1) / 3);
        return R"({"entry":"call","operation":)" + std::to_string(number) + R"(,"call":)" +
               std::to_string(call) + R"(,"function":"CProperty::)" + function +
               R"(","name":"","id":)" + id + R"(,"value":)" + (sent.empty() ? "8" : size) +
               R"(,"from_list":false,"sent":")" + sent + "\"}\n";
    }

    static std::string Answer(int number, int call, const std::string& received = "") {
        return R"({"entry":"answer","operation":)" + std::to_string(number) + R"(,"call":)" +
               std::to_string(call) + R"(,"received":")" + received +
               R"(","size_left":null,"result":null,"failure":null,"time_ms":0.25})"
               "\n";
    }

    inline static const std::string BODY_ID = "16777222";
    inline static const std::string BODY_54321 = "a7 0e 00 00 31 4f c1 5e";  // 1611 4 2 3 054321
    inline static const std::string BODY_54322 = "a7 0e 00 00 32 4f c1 5e";

    /// GetBodyID on a body, whose record nobody knew.
    static std::string Read(int number, const std::string& body, int at) {
        return Begin(number, "GetBodyID", at) + Call(number, 1, "Get", BODY_ID, "") +
               Answer(number, 1, body) + End(number);
    }

    /// The numbers in the JSON rows of a list.
    static std::vector<int> Listed(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "trace");
        arguments.emplace_back("--json");
        const JIGHOST_RUN run = RunJighost(arguments);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        std::istringstream rows(run.output);
        std::vector<int> numbers;
        for (std::string row; std::getline(rows, row);) {
            int number = 0;
            if (std::sscanf(row.c_str(), "{\"number\":%d,", &number) == 1) {
                numbers.push_back(number);
            }
        }
        return numbers;
    }

    static void ExpectRefused(
        const std::vector<std::string>& arguments, const std::string& complaint) {
        const JIGHOST_RUN run = RunJighost(arguments);
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.errors, "jighost: " + complaint + "\n");
    }

  private:
    FreshFolder m_Folder;
};

TEST_F(TraceCommandTest, ListTellsWhatRanAndWhatIsMissing) {
    WriteFile(
        "line.jsonl", START + Read(1, BODY_54321, 0) + Begin(2, "EnterFactoryMode", 1) +
                          End(2, 8193) + GAP + Begin(4, "SaveBodyID", 3) +
                          Call(4, 1, "Save", BODY_ID, "") + "{\"entry\":\"ans");
    const JIGHOST_RUN run = RunJighost({"trace", "line.jsonl"});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_EQ(
        run.output,
        "line.jsonl: /opt/line/host, process 4711 on line3, from 2026-11-22T21:06:59+01:00\n"
        "      1  2026-11-22 22:06:00.123  GetBodyID                        RESULT_SUCCESS (0) "
        "          0.500 ms     1 call   54321\n"
        "      2  2026-11-22 22:06:01.123  EnterFactoryMode                 event or link code "
        "(8193)     0.500 ms     0 calls  54321\n"
        "         2026-11-22 22:06:02.000  3 entries are missing: No space left on device\n"
        "      4  2026-11-22 22:06:03.123  SaveBodyID                       call 1 never "
        "returned               -     1 call   54321\n"
        "\n3 operations, 2 failed, 1 of these without an end, 1 gap\n"
        "      1  EnterFactoryMode                 event or link code (8193)\n");
}

TEST_F(TraceCommandTest, ListHoldsWhatIsAskedFor) {
    WriteFile(
        "line.jsonl", START + Read(1, BODY_54321, 0) + Begin(2, "EnterFactoryMode", 1) +
                          End(2, 8193) + Read(3, BODY_54322, 2) + Read(4, BODY_54321, 3) +
                          Begin(5, "SetBodyID", 4) + Call(5, 1, "Set", BODY_ID, BODY_54322) +
                          Answer(5, 1) + End(5) + Begin(6, "MPUReset", 60));
    const std::string line = "line.jsonl";
    EXPECT_THAT(Listed({line}), ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_THAT(Listed({line, "--failed"}), ElementsAre(2, 6));
    EXPECT_THAT(Listed({line, "--operation", "GetBodyID"}), ElementsAre(1, 3, 4));
    EXPECT_THAT(Listed({line, "--serial", "54322"}), ElementsAre(3, 5, 6));
    EXPECT_THAT(Listed({line, "--since", "2026-11-22T22:06:03"}), ElementsAre(4, 5, 6));
    EXPECT_THAT(Listed({line, "--since", "2026-11-22 22:06:03.124"}), ElementsAre(5, 6));
    EXPECT_THAT(Listed({line, "--until", "2026-11-22 22:06"}), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(Listed({line, "--until", "2026-11-21"}), ElementsAre());
    EXPECT_THAT(
        Listed({line, "--since", "2026-11-22T22:06:03", "--until", "2026-11-22"}),
        ElementsAre(4, 5, 6));
    ExpectRefused(
        {"trace", line, "--since", "2026-11-23", "--until", "2026-11-22T22:06"},
        "--since 2026-11-23: expected no later moment than --until 2026-11-22 22:06");
    ExpectRefused(
        {"trace", line, "--since", "22:06"},
        "--since: expected a date, such as 2026-11-22, with or without a time behind it, such as "
        "21:06 or 21:06:59.123, got '22:06'");
    WriteFile(
        "bare.jsonl", "{\"format\":2,\"content\":\"jighost trace\"}\n" +
                          std::string("{\"entry\":\"operation\",\"operation\":1,\"name\":"
                                      "\"MPUReset\",\"record\":\"\"}\n"));
    ExpectRefused(
        {"trace", "bare.jsonl", "--until", "2026-11-22"},
        "bare.jsonl:2: tells no moment, as --since and --until need it");
}

TEST_F(TraceCommandTest, OperationGoesOnInTheNextFileOfItsProcess) {
    WriteFile(
        "a.jsonl",
        START + Read(1, BODY_54321, 0) + Begin(2, "GetBodyID", 1) + Call(2, 1, "Get", BODY_ID, ""));
    WriteFile(
        "b.jsonl", HEAD +
                       R"("continues":"a.jsonl","operations_before":2})"
                       "\n" +
                       Answer(2, 1, BODY_54322) + End(2) + Read(3, BODY_54321, 2));
    WriteFile("other.jsonl", START + Begin(1, "MPUReset", 5));
    EXPECT_THAT(Listed({"b.jsonl"}), ElementsAre(3));
    const JIGHOST_RUN run = RunJighost({"trace", "a.jsonl", "other.jsonl", "b.jsonl", "--failed"});
    EXPECT_THAT(run.output, HasSubstr("\n4 operations, 1 failed, 1 of these without an end\n"));
}

TEST_F(TraceCommandTest, WrongFilesEndInOneLine) {
    const auto expect = [](const std::string& lines, const std::string& complaint) {
        WriteFile("wrong.jsonl", START + Begin(5, "MPUReset") + lines);
        ExpectRefused({"trace", "wrong.jsonl"}, "wrong.jsonl:" + complaint);
    };
    expect(Begin(5, "MPUReset"), "3: operation: expected more than 5, got 5");
    expect(End(6), "3: there can be no result here");
    expect(Answer(5, 1), "3: there can be no answer here");
    expect(Call(5, 1, "Get", BODY_ID, "") + End(5), "4: there can be no result here");
    expect(Call(5, 2, "Get", BODY_ID, ""), "3: call: expected 1, got 2");
    expect("{\"entry\":\"result\"} {}\n", "3: expected a JSON object");
    expect("{\"entry\":\"result\"\n", "3: expected a JSON object");
    expect("\n", "3: expected a JSON object");
    expect(
        "{\"entry\":\"end\"}\n",
        "3: entry: expected \"operation\", \"call\", \"answer\", "
        "\"result\", \"log\" or \"gap\", got \"end\"");
    std::string many;
    for (int i = 6; i < 1006; ++i) {
        many += Begin(i, "MPUReset");
    }
    expect(many, "1002: expected at most 1000 operations at one moment");
    WriteFile("empty.jsonl", "");
    ExpectRefused({"trace", "empty.jsonl"}, "empty.jsonl:0: expected the first line of a trace");
    MakeIrregular("pipe.jsonl");
    ExpectRefused({"trace", "pipe.jsonl"}, "can't read pipe.jsonl: it is no regular file");
    ExpectRefused({"trace"}, "expected a file of --trace or of the recorder, got none");
}

TEST_F(TraceCommandTest, ShownOperationIsWhole) {
    RunJighost({"run", "SetOwnerName", "OwnerName=Line 9", "--trace", "owner.jsonl"});
    const JIGHOST_RUN run = RunJighost({"trace", "owner.jsonl", "--show", "1"});
    EXPECT_EQ(run.exitCode, 0) << run.errors;
    EXPECT_THAT(
        run.output, StartsWith("operation 1, SetOwnerName\n"
                               "record before:\nOwnerName = \"Line 9\"\n"));
    EXPECT_THAT(run.output, HasSubstr("[FUNC] SetOwnerName\n"));
    EXPECT_THAT(run.output, HasSubstr("\n   1 Set 0x"));
    EXPECT_THAT(run.output, HasSubstr("SetOwnerName: RESULT_SUCCESS (0), 1 call, "));
    EXPECT_THAT(run.output, HasSubstr("record after:\nOwnerName = \"Line 9\"\n"));
    ExpectRefused({"trace", "owner.jsonl", "--show", "2"}, "no operation 2 in owner.jsonl");
}

TEST_F(TraceCommandTest, DiffTellsTheFirstDifferenceAndCounts) {
    const std::string wrong = Begin(2, "MPUReset") + End(2, 8193);
    const std::string begun = Begin(2, "GetBodyID") + Call(2, 1, "Get", BODY_ID, "");
    const std::string torn = Begin(2, "GetBodyID") + GAP + End(2);
    WriteFile("good.jsonl", START + Read(1, BODY_54321, 0) + Read(2, BODY_54321, 1));
    const auto expect = [](const std::string& badLines, int exitCode, const std::string& first,
                           const std::vector<std::string>& counts) {
        WriteFile("bad.jsonl", START + badLines);
        const JIGHOST_RUN run = RunJighost({"trace", "diff", "good.jsonl", "bad.jsonl"});
        EXPECT_EQ(run.exitCode, exitCode) << run.errors;
        EXPECT_THAT(run.output, StartsWith(first));
        for (const std::string& row : counts) {
            EXPECT_THAT(run.output, HasSubstr('\n' + row + '\n'));
        }
    };
    const std::string two = "operation 2 and operation 2, GetBodyID, differ in ";
    const std::string answer = "call 1, the answer to Get 0x1000006 8\n";
    const std::string name = "GetBodyID                      ";
    const std::string oneSame = name + "           1          1          0          0          0";
    expect(
        Read(1, BODY_54321, 30) + Read(2, BODY_54321, 50), 0, "     ",
        {name + "           2          0          0          0          0"});
    expect(
        Read(1, BODY_54321, 0) + Read(2, BODY_54322, 1), 5,
        two + answer + "  good: " + BODY_54321 + "\n  bad:  " + BODY_54322 + "\n\n", {oneSame});
    expect(
        Read(1, BODY_54321, 0) + begun, 5,
        two + "call 1, Get 0x1000006 8\n  good: " + BODY_54321 + "\n  bad:  no answer\n\n",
        {oneSame});
    expect(
        Read(1, BODY_54321, 0) + Begin(2, "GetBodyID") + End(2), 5,
        two + "call 1\n  good: Get 0x1000006 8\n  bad:  no call\n\n", {oneSame});
    expect(
        Read(1, BODY_54321, 0) + wrong + Read(3, BODY_54321, 1), 5,
        "operation 2, MPUReset, is one that only the second one has\n\n",
        {name + "           2          0          0          0          0",
         "MPUReset                                  0          0          0          0          "
         "1"});
    expect(
        Read(1, BODY_54321, 0), 5, "operation 2, GetBodyID, is one that only the first one has\n\n",
        {name + "           1          0          0          1          0"});
    expect(
        Read(1, BODY_54321, 0) + torn, 5, "     ",
        {name + "           1          0          1          0          0",
         "gaps and operations without a beginning: 1"});
    WriteFile("empty.jsonl", "");
    ExpectRefused(
        {"trace", "diff", "good.jsonl", "empty.jsonl"},
        "empty.jsonl:0: expected the first line of a trace");
}

TEST_F(TraceCommandTest, ChosenOperationsAreReplayed) {
    const std::string wrong = Begin(3, "EnterFactoryMode") + End(3, 8193);
    WriteFile(
        "line.jsonl",
        START + Read(1, BODY_54321, 0) + Read(2, BODY_54322, 1) + wrong + Read(4, BODY_54321, 2));
    const auto expect = [](const std::vector<std::string>& options, int exitCode,
                           const std::string& output) {
        std::vector<std::string> arguments = {"replay", "line.jsonl"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const JIGHOST_RUN run = RunJighost(arguments);
        EXPECT_EQ(run.exitCode, exitCode) << run.errors;
        EXPECT_THAT(run.output + run.errors, HasSubstr(output));
    };
    expect({"--until", "2"}, 0, "2 operations, 2 calls as recorded\n");
    expect({"--operation", "4"}, 0, "1 operation, 1 call as recorded\n");
    expect({"--from", "2"}, 5, "operation 3, EnterFactoryMode, differs in call 1\n");
    expect({"--failed"}, 5, "0 operations, 0 calls as recorded\noperation 3, EnterFactoryMode, ");
    expect({"--from", "5"}, 2, "line.jsonl: expected an operation from 1 to 4, got 5\n");
    expect({"--from", "2", "--until", "2"}, 0, "1 operation, 1 call as recorded\n");
    expect({"--from", "3", "--until", "2"}, 2, "--until comes ahead of --from\n");
    expect({"--operation", "1", "--from", "1"}, 2, "expected --operation, or --from and --until\n");
    expect({"--operation", "x"}, 2, "--operation: expected an operation's number, got 'x'\n");
    expect({"--until", "2", "--failed"}, 2, "expected an operation at least that failed");
    // Calls of two threads that never returned.
    WriteFile(
        "line.jsonl", START + Begin(1, "GetBodyID") + Call(1, 1, "Get", BODY_ID, "") +
                          Begin(2, "GetBodyID") + Call(2, 1, "Get", BODY_ID, "") +
                          Read(3, BODY_54321, 3));
    const std::string hung = "GetBodyID, call 1, Get 0x1000006 8, which never returned";
    const std::string both = "the trace was cut off at " + hung + "; " + hung + '\n';
    expect({"--failed"}, 5, "0 operations, 0 calls as recorded\n" + both);
    expect({}, 5, "1 operation, 1 call as recorded\n" + both);
}

TEST_F(TraceCommandTest, ProgramsAreToldTheSameAsPeople) {
    const auto json = [](std::vector<std::string> arguments, int exitCode) {
        arguments.emplace_back("--json");
        const JIGHOST_RUN run = RunJighost(arguments);
        EXPECT_EQ(run.exitCode, exitCode) << run.errors;
        return Json::parse(run.output);
    };
    const std::string failure = R"({"kind":"integer","code":-5,"message":"a\u001bb"})";
    std::string failed = Answer(2, 1);
    failed.replace(failed.find("null,\"time"), 4, failure);
    WriteFile("good.jsonl", START + Read(1, BODY_54321, 0));
    WriteFile(
        "bad.jsonl", START + Read(1, BODY_54322, 0) + Begin(2, "EnterFactoryMode") +
                         Call(2, 1, "Get", BODY_ID, "") + failed + Call(2, 2, "Get", BODY_ID, ""));

    const Json shown = json({"trace", "bad.jsonl", "--show", "2"}, 0);
    EXPECT_EQ(shown["calls"][0]["failure"], Json::parse(failure));
    EXPECT_FALSE(shown["calls"][1].contains("failure"));  // it never returned
    EXPECT_EQ(shown["record_after"], nullptr);

    const Json difference = json({"trace", "diff", "good.jsonl", "bad.jsonl"}, 5)["first"];
    EXPECT_EQ(difference["good"], BODY_54321);
    EXPECT_EQ(difference["bad"], BODY_54322);

    const Json replay = json({"replay", "bad.jsonl"}, 5);
    EXPECT_EQ(replay["operations"], 1);
    EXPECT_EQ(replay["calls"], 1);
    EXPECT_EQ(replay["difference"]["operation"], 2);
    EXPECT_EQ(replay["difference"]["where"], "call 1");
    EXPECT_EQ(json({"replay", "good.jsonl"}, 0)["difference"], nullptr);
}

TEST_F(TraceCommandTest, RecordingOfA32BitWindowsHostIsReplayed) {
    // 1, 01, 1, 1 and 000001 in one number: a field of the record each.
    const std::string body = "02 00 00 00 c1 9d a9 5a";
    const std::string zeros = "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00";
    const std::string ones = "01 00 00 00 01 00 00 00 01 00 00 00 01 00 00 00 01 00 00 00";
    const auto expect = [&](const std::string& returned, int exitCode, const std::string& output) {
        WriteFile(
            "line.jsonl",
            R"({"format":2,"content":"jighost trace","started":"2026-11-22T21:06:59+01:00",)"
            R"("machine":"LINE3","process":4711,"program":"C:\\line\\host.exe","bits":32,)"
            R"("module":{"file":"C:\\line\\TuneBench.t460.recorded.dll","size":208896},)"
            R"("continues":"","operations_before":0})"
            "\n"
            R"({"entry":"operation","operation":1,"name":"GetBodyID","record":")" +
                zeros + "\",\"thread\":1,\"at\":1795381560123}\n" + Call(1, 1, "Get", BODY_ID, "") +
                Answer(1, 1, body) + R"({"entry":"result","operation":1,"result":0,"record":")" +
                returned + "\",\"time_ms\":0.5}\n");
        const JIGHOST_RUN run = RunJighost({"replay", "line.jsonl"});
        EXPECT_EQ(run.exitCode, exitCode) << run.errors;
        EXPECT_THAT(run.output, HasSubstr(output));
    };
    expect(ones, 0, "1 operation, 1 call as recorded\n");
    expect(zeros, 5, "operation 1, GetBodyID, differs in ");
    EXPECT_THAT(
        RunJighost({"trace", "line.jsonl"}).output,
        StartsWith("line.jsonl: C:\\line\\host.exe, process 4711 on LINE3, "));
}

TEST_F(TraceCommandTest, WholeOperationsAroundAGapAreReplayed) {
    WriteFile(
        "line.jsonl", START + Read(1, BODY_54321, 0) + Begin(2, "GetBodyID") + GAP + End(2) +
                          Read(4, BODY_54321, 2));
    const auto expect = [](const std::vector<std::string>& options, int exitCode,
                           const std::vector<std::string>& lines) {
        std::vector<std::string> arguments = {"replay", "line.jsonl"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const JIGHOST_RUN run = RunJighost(arguments);
        EXPECT_EQ(run.exitCode, exitCode);
        for (const std::string& line : lines) {
            EXPECT_THAT(run.output + run.errors, HasSubstr(line + '\n'));
        }
    };
    const std::string gap = "line.jsonl:7: 3 entries are missing here: No space left on device";
    expect({"--operation", "1"}, 0, {gap, "1 operation, 1 call as recorded"});
    expect({"--operation", "4"}, 0, {gap, "1 operation, 1 call as recorded"});
    expect(
        {"--operation", "2"}, 5,
        {gap, "line.jsonl:6: operation 2, GetBodyID, is not whole and can't be replayed",
         "0 operations, 0 calls as recorded"});
    expect(
        {}, 5,
        {gap, "line.jsonl: 1 operation lacks its beginning", "2 operations, 2 calls as recorded"});
}

TEST_F(TraceCommandTest, SequenceOfATraceDoesTheSame) {
    WriteFile("first.yaml", R"(format: 1
steps:
  - {operation: SetOwnerName, record: {OwnerName: 'Li"ne: 9'}}
  - {operation: SetABoardEepromData, expect: 0x2001, record: {"Data[7]": 1, Address: 7, Count: 1}}
  - operation: EnterFactoryMode
)");
    const std::vector<std::string> fault = {"--fault", "FA_WriteEepromData=0x2001"};
    RunJighost({"sequence", "first.yaml", fault[0], fault[1], "--trace", "first.jsonl"});
    const JIGHOST_RUN made = RunJighost({"sequence", "--from-trace", "first.jsonl"});
    EXPECT_EQ(made.exitCode, 0) << made.errors;
    WriteFile("second.yaml", made.output);
    const JIGHOST_RUN run =
        RunJighost({"sequence", "second.yaml", fault[0], fault[1], "--trace", "second.jsonl"});
    EXPECT_EQ(run.exitCode, 0) << run.errors << made.output;
    const auto records = [](const char* pszPath) {
        std::istringstream entries(ReadFile(pszPath));
        std::vector<std::string> begins;
        for (std::string entry; std::getline(entries, entry);) {
            if (entry.starts_with(R"({"entry":"operation",)")) {
                begins.push_back(entry);
            }
        }
        return begins;
    };
    EXPECT_THAT(records("first.jsonl"), SizeIs(3));
    EXPECT_EQ(records("first.jsonl"), records("second.jsonl"));

    WriteFile("line.jsonl", START + Begin(1, "SetOwnerName") + End(1) + GAP);
    const JIGHOST_RUN lacking = RunJighost({"sequence", "--from-trace", "line.jsonl"});
    EXPECT_EQ(lacking.exitCode, 5);
    EXPECT_EQ(
        lacking.errors,
        "jighost: line.jsonl:2: operation 1, SetOwnerName, stands with zeros: the recording lacks "
        "its record\n"
        "jighost: line.jsonl:4: 3 entries are missing here: No space left on device\n");
    ExpectRefused(
        {"sequence", "first.yaml", "--from-trace", "first.jsonl"},
        "expected a sequence's file, or --from-trace and no file");
}

}  // namespace
