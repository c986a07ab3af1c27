// Recordings listed, shown, compared, run again in parts, and made into sequences.
#include <cstdint>
#include <sstream>

#include "jighost/output/Json.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::ElementsAre;
using testing::HasSubstr;
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

    static std::string Entry(const std::string& kind, int number, const std::string& rest) {
        return R"({"entry":")" + kind + R"(","operation":)" + std::to_string(number) + ',' + rest +
               "}\n";
    }

    /// Of an operation without a record; `at` in seconds behind 22:06:00 of the line's clock.
    static std::string Begin(int number, const std::string& name, std::int64_t at = 0) {
        const std::string moment = std::to_string(1795381560123 + at * 1000);
        return Entry(
            "operation", number,
            R"("name":")" + name + R"(","record":"","thread":1,"at":)" + moment);
    }

    static std::string End(int number, int result = 0) {
        return Entry(
            "result", number,
            R"("result":)" + std::to_string(result) + R"(,"record":"","time_ms":0.5)");
    }

    /// Of the body's ID.
    static std::string Call(
        int number, int call = 1, const std::string& function = "Get",
        const std::string& sent = "") {
        return Entry(
            "call", number,
            R"("call":)" + std::to_string(call) + R"(,"function":"CProperty::)" + function +
                R"(","name":"","id":16777222,"value":8,"from_list":false,"sent":")" + sent + '"');
    }

    static std::string Answer(
        int number, const std::string& received = "", const std::string& failure = "null") {
        return Entry(
            "answer", number,
            R"("call":1,"received":")" + received +
                R"(","size_left":null,"result":null,"failure":)" + failure + R"(,"time_ms":0.25)");
    }

    inline static const std::string BODY_54321 = "a7 0e 00 00 31 4f c1 5e";  // 1611 4 2 3 054321
    inline static const std::string BODY_54322 = "a7 0e 00 00 32 4f c1 5e";

    /// GetBodyID on a body, whose record nobody knew.
    static std::string Read(int number, const std::string& body, int at) {
        return Begin(number, "GetBodyID", at) + Call(number) + Answer(number, body) + End(number);
    }

    /// The numbers of what is listed of files.
    static std::vector<int> Listed(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"trace", "--json"});
        const JIGHOST_RUN run = RunJighost(arguments);
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        std::istringstream rows(run.output);
        std::vector<int> numbers;
        for (std::string row; std::getline(rows, row);) {
            const Json json = Json::parse(row);
            if (json.contains("number")) {
                numbers.push_back(json["number"]);
            }
        }
        return numbers;
    }

    /// Replays line.jsonl; the text stands in what comes of it.
    static void ExpectReplay(const std::string& options, int exitCode, const std::string& text) {
        const JIGHOST_RUN run = RunLine("replay line.jsonl " + options);
        EXPECT_EQ(run.exitCode, exitCode) << options;
        EXPECT_THAT(run.output + run.errors, HasSubstr(text));
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
                          End(2, 8193) + GAP + Begin(4, "SaveBodyID", 3) + Call(4, 1, "Save") +
                          "{\"entry\":\"ans");
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
                          Begin(5, "SetBodyID", 4) + Call(5, 1, "Set", BODY_54322) + Answer(5) +
                          End(5) + Begin(6, "MPUReset", 60));
    const std::string line = "line.jsonl";
    EXPECT_THAT(Listed({line}), ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_THAT(Listed({line, "--failed"}), ElementsAre(2, 6));
    EXPECT_THAT(Listed({line, "--operation", "GetBodyID"}), ElementsAre(1, 3, 4));
    EXPECT_THAT(Listed({line, "--serial", "54322"}), ElementsAre(3, 5, 6));
    EXPECT_THAT(Listed({line, "--since", "2026-11-22 22:06:03.123"}), ElementsAre(4, 5, 6));
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
    WriteFile("bare.jsonl", R"({"format":2,"content":"jighost trace"}
{"entry":"operation","operation":1,"name":"MPUReset","record":""}
)");
    ExpectRefused(
        {"trace", "bare.jsonl", "--until", "2026-11-22"},
        "bare.jsonl:2: tells no moment, as --since and --until need it");
}

TEST_F(TraceCommandTest, OperationGoesOnInTheNextFileOfItsProcess) {
    WriteFile("a.jsonl", START + Read(1, BODY_54321, 0) + Begin(2, "GetBodyID", 1) + Call(2));
    WriteFile(
        "b.jsonl", HEAD + R"("continues":"a.jsonl","operations_before":2})" + '\n' +
                       Answer(2, BODY_54322) + End(2) + Read(3, BODY_54321, 2));
    WriteFile("other.jsonl", START + Begin(1, "MPUReset", 5));
    EXPECT_THAT(Listed({"b.jsonl"}), ElementsAre(3));
    EXPECT_THAT(
        RunLine("trace a.jsonl other.jsonl b.jsonl --failed").output,
        HasSubstr("\n4 operations, 1 failed, 1 of these without an end\n"));
}

TEST_F(TraceCommandTest, WrongFilesEndInOneLine) {
    std::string many;
    for (int i = 6; i < 1006; ++i) {
        many += Begin(i, "MPUReset");
    }
    const std::string result = R"({"entry":"result"})";
    const std::pair<std::string, std::string> wrong[] = {
        {Begin(5, "MPUReset"), "3: operation: expected more than 5, got 5"},
        {End(6), "3: there can be no result here"},
        {Answer(5), "3: there can be no answer here"},
        {Call(5) + End(5), "4: there can be no result here"},
        {Call(5, 2), "3: call: expected 1, got 2"},
        {result + " {}\n", "3: expected a JSON object"},
        {"{\"entry\":\"result\"\n", "3: expected a JSON object"},
        {"\n", "3: expected a JSON object"},
        {"{\"entry\":\"end\"}\n",
         "3: entry: expected \"operation\", \"call\", \"answer\", \"result\", \"thrown\", \"log\" "
         "or "
         "\"gap\", got \"end\""},
        {many, "1002: expected at most 1000 operations at one moment"},
    };
    for (const auto& [lines, complaint] : wrong) {
        WriteFile("wrong.jsonl", START + Begin(5, "MPUReset") + lines);
        ExpectRefused({"trace", "wrong.jsonl"}, "wrong.jsonl:" + complaint);
    }
    WriteFile("empty.jsonl", "");
    const std::string empty = "empty.jsonl:0: expected the first line of a trace";
    ExpectRefused({"trace", "empty.jsonl"}, empty);
    WriteFile("good.jsonl", START);
    ExpectRefused({"trace", "diff", "good.jsonl", "empty.jsonl"}, empty);
    ExpectRefused({"trace", "good.jsonl", "--show", "2"}, "no operation 2 in good.jsonl");
    MakeIrregular("pipe.jsonl");
    ExpectRefused({"trace", "pipe.jsonl"}, "can't read pipe.jsonl: it is no regular file");
    ExpectRefused({"trace"}, "expected a file of --trace or of the recorder, got none");
}

TEST_F(TraceCommandTest, DiffTellsTheFirstDifferenceAndCounts) {
    const std::string same = Read(1, BODY_54321, 0);
    const std::string second = "operation 2 and operation 2, GetBodyID, differ in call 1";
    WriteFile("good.jsonl", START + same + Read(2, BODY_54321, 1));
    // The counts: same, different, incomplete, only good, only bad.
    const std::tuple<std::string, int, std::string, std::string> diffs[] = {
        {Read(1, BODY_54321, 30) + Read(2, BODY_54321, 50), 0, "", "GetBodyID 2 0 0 0 0"},
        {same + Read(2, BODY_54322, 1), 5,
         second + ", the answer to Get 0x1000006 8\n  good: " + BODY_54321 +
             "\n  bad:  " + BODY_54322 + "\n\n",
         "GetBodyID 1 1 0 0 0"},
        {same + Begin(2, "GetBodyID") + Call(2), 5,
         second + ", Get 0x1000006 8\n  good: " + BODY_54321 + "\n  bad:  no answer\n\n",
         "GetBodyID 1 1 0 0 0"},
        {same + Begin(2, "GetBodyID") + End(2), 5,
         second + "\n  good: Get 0x1000006 8\n  bad:  no call\n\n", "GetBodyID 1 1 0 0 0"},
        {same + Begin(2, "MPUReset") + End(2, 8193) + Read(3, BODY_54321, 1), 5,
         "operation 2, MPUReset, is one that only the second one has\n\n",
         "GetBodyID 2 0 0 0 0 MPUReset 0 0 0 0 1"},
        {same, 5, "operation 2, GetBodyID, is one that only the first one has\n\n",
         "GetBodyID 1 0 0 1 0"},
        {same + Begin(2, "GetBodyID") + GAP + End(2), 5, "",
         "GetBodyID 1 0 1 0 0 gaps and operations without a beginning: 1"},
    };
    for (const auto& [bad, exitCode, first, counts] : diffs) {
        WriteFile("bad.jsonl", START + bad);
        const JIGHOST_RUN run = RunLine("trace diff good.jsonl bad.jsonl");
        EXPECT_EQ(run.exitCode, exitCode) << run.errors;
        EXPECT_THAT(run.output, StartsWith(first + "     "));
        EXPECT_EQ(
            Words(run.output.substr(first.size())),
            Words("same different incomplete only good only bad " + counts));
    }
}

TEST_F(TraceCommandTest, ChosenOperationsAreReplayed) {
    WriteFile(
        "line.jsonl", START + Read(1, BODY_54321, 0) + Read(2, BODY_54322, 1) +
                          Begin(3, "EnterFactoryMode") + End(3, 8193) + Read(4, BODY_54321, 2));
    const std::tuple<std::string, int, std::string> replays[] = {
        {"--until 2", 0, "2 operations, 2 calls as recorded\n"},
        {"--operation 4", 0, "1 operation, 1 call as recorded\n"},
        {"--from 2", 5, "operation 3, EnterFactoryMode, differs in call 1\n"},
        {"--failed", 5, "0 operations, 0 calls as recorded\noperation 3, EnterFactoryMode, "},
        {"--from 5", 2, "line.jsonl: expected an operation from 1 to 4, got 5\n"},
        {"--from 2 --until 2", 0, "1 operation, 1 call as recorded\n"},
        {"--from 3 --until 2", 2, "--until comes ahead of --from\n"},
        {"--operation 1 --from 1", 2, "expected --operation, or --from and --until\n"},
        {"--operation x", 2, "--operation: expected an operation's number, got 'x'\n"},
        {"--until 2 --failed", 2, "expected an operation at least that failed"},
    };
    for (const auto& [options, exitCode, text] : replays) {
        ExpectReplay(options, exitCode, text);
    }
    // Calls of two threads that never returned.
    WriteFile(
        "line.jsonl", START + Begin(1, "GetBodyID") + Call(1) + Begin(2, "GetBodyID") + Call(2) +
                          Read(3, BODY_54321, 3));
    const std::string hung = "GetBodyID, call 1, Get 0x1000006 8, which never returned";
    const std::string both = "the trace was cut off at " + hung + "; " + hung + '\n';
    ExpectReplay("--failed", 5, "0 operations, 0 calls as recorded\n" + both);
    ExpectReplay("", 5, "1 operation, 1 call as recorded\n" + both);
}

TEST_F(TraceCommandTest, WholeOperationsAroundAGapAreReplayed) {
    WriteFile(
        "line.jsonl", START + Read(1, BODY_54321, 0) + Begin(2, "GetBodyID") + GAP + End(2) +
                          Read(4, BODY_54321, 2));
    const std::string one = "1 operation, 1 call as recorded\n";
    const std::string gap =
        "jighost: line.jsonl:7: 3 entries are missing here: No space left on device\n";
    const std::string torn =
        "jighost: line.jsonl:6: operation 2, GetBodyID, is not whole and can't be replayed\n";
    ExpectReplay("--operation 1", 0, one + gap);
    ExpectReplay("--operation 4", 0, one + gap);
    ExpectReplay("--operation 2", 5, "0 operations, 0 calls as recorded\n" + gap + torn);
    ExpectReplay(
        "", 5,
        "2 operations, 2 calls as recorded\n" + gap + torn +
            "jighost: line.jsonl: 1 operation lacks its beginning\n");
}

TEST_F(TraceCommandTest, RecordingOfA32BitWindowsHostIsReplayed) {
    std::string head = START;
    head.replace(head.find("/opt/line/host"), 14, R"(C:\\line\\host.exe)");
    head.insert(
        head.find(R"("continues")"),
        R"("bits":32,"module":{"file":"C:\\line\\TuneBench.t460.recorded.dll","size":208896},)");
    const auto withRecord = [](std::string entry, const std::string& record) {
        return entry.insert(entry.find(R"("record":"")") + 10, record);
    };
    // 1, 01, 1, 1 and 000001 in one number: a field of the record each.
    const std::string body = "02 00 00 00 c1 9d a9 5a";
    const std::string zeros = "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00";
    const std::string ones = "01 00 00 00 01 00 00 00 01 00 00 00 01 00 00 00 01 00 00 00";
    const std::string begun =
        head + withRecord(Begin(1, "GetBodyID"), zeros) + Call(1) + Answer(1, body);
    WriteFile("line.jsonl", begun + withRecord(End(1), ones));
    ExpectReplay("", 0, "1 operation, 1 call as recorded\n");
    EXPECT_THAT(
        RunJighost({"trace", "line.jsonl"}).output,
        StartsWith("line.jsonl: C:\\line\\host.exe, process 4711 on line3, "));
    WriteFile("line.jsonl", begun + withRecord(End(1), zeros));
    ExpectReplay("", 5, "operation 1, GetBodyID, differs in ");
}

TEST_F(TraceCommandTest, ProgramsAreToldTheSameAsPeople) {
    const auto json = [](const std::string& line, int exitCode) {
        const JIGHOST_RUN run = RunLine(line + " --json");
        EXPECT_EQ(run.exitCode, exitCode) << run.errors;
        return Json::parse(run.output);
    };
    const std::string failure = R"({"kind":"integer","code":-5,"message":"a\u001bb"})";
    WriteFile("good.jsonl", START + Read(1, BODY_54321, 0));
    WriteFile(
        "bad.jsonl", START + Begin(1, "GetBodyID") + Call(1) + Answer(1, BODY_54322) +
                         Entry(
                             "result", 1,
                             R"("result":0,"record":"","time_ms":0.5,)"
                             R"("log":"1 [FUNC]\r\n2 [FUNC] \"\n3 [","log_left_out":7)") +
                         Begin(2, "EnterFactoryMode") + Call(2) + Answer(2, "", failure) +
                         Call(2, 2));

    const Json logged = json("trace bad.jsonl --show 1", 0);
    EXPECT_EQ(logged["log"], Json({"1 [FUNC]", "2 [FUNC] \"", "3 ["}));
    EXPECT_EQ(logged["log_left_out"], 7);
    EXPECT_EQ(logged["log_read"], true);
    EXPECT_THAT(
        RunLine("trace bad.jsonl --show 1").output,
        HasSubstr(
            "\n     1 [FUNC]\n     2 [FUNC] \"\n     3 [\n     ... (7 bytes more of the log)\n"));
    const Json shown = json("trace bad.jsonl --show 2", 0);
    EXPECT_EQ(shown["calls"][0]["failure"], Json::parse(failure));
    EXPECT_FALSE(shown["calls"][1].contains("failure"));  // it never returned
    EXPECT_EQ(shown["record_after"], nullptr);

    const Json difference = json("trace diff good.jsonl bad.jsonl", 5)["first"];
    EXPECT_EQ(difference["good"], BODY_54321);
    EXPECT_EQ(difference["bad"], BODY_54322);

    const Json replay = json("replay bad.jsonl", 5);
    EXPECT_EQ(replay["operations"], 1);
    EXPECT_EQ(replay["calls"], 1);
    EXPECT_EQ(replay["difference"]["operation"], 2);
    EXPECT_EQ(replay["difference"]["where"], "call 1");
    EXPECT_EQ(json("replay good.jsonl", 0)["difference"], nullptr);
}

TEST_F(TraceCommandTest, ThrowsBesideCallsAreShownAndCompared) {
    const std::string failure = R"({"kind":"integer","code":7,"message":""})";
    const auto thrown = [&](const std::string& function, int number) {
        return Entry(
            "thrown", 1,
            R"("function":")" + function + R"(","number":)" + std::to_string(number) +
                R"(,"failure":)" + failure);
    };
    const std::string begun = START + Begin(1, "GetBodyID") + Call(1) + Answer(1, BODY_54321);
    WriteFile("good.jsonl", begun + End(1, 7));
    const std::string construction = thrown("CFilePath::CFilePath", 2);
    WriteFile("bad.jsonl", begun + construction + thrown("_gt", 3) + End(1, 7));
    const std::string shown = "     construction 2, CFilePath -> failed: integer 7\n";
    EXPECT_THAT(
        RunLine("trace bad.jsonl --show 1").output,
        HasSubstr(" (0.250 ms)\n" + shown + "     _gt 3 -> failed: integer 7\nGetBodyID: "));
    const Json json = Json::parse(RunLine("trace bad.jsonl --show 1 --json").output);
    EXPECT_EQ(json["calls"].size(), 1U);
    EXPECT_EQ(
        json["thrown"][0], Json::parse(
                               R"({"function":"CFilePath::CFilePath","number":2,"calls_before":1,)"
                               R"("failure":)" +
                               failure + '}'));

    const std::string where = "operation 1 and operation 1, GetBodyID, differ in what was thrown\n";
    const std::tuple<std::string, std::string, std::string> others[] = {
        {"", "nothing", "construction 2, CFilePath -> failed: integer 7"},
        {construction, "nothing", "_gt 3 -> failed: integer 7"},
        {construction + thrown("_gt", 2), "_gt 2 -> failed: integer 7",
         "_gt 3 -> failed: integer 7"},
    };
    for (const auto& [entries, good, bad] : others) {
        WriteFile("good.jsonl", begun + entries + End(1, 7));
        const JIGHOST_RUN diff = RunLine("trace diff good.jsonl bad.jsonl");
        EXPECT_EQ(diff.exitCode, 5) << diff.errors;
        EXPECT_THAT(diff.output, StartsWith(where + "  good: " + good + "\n  bad:  " + bad + "\n"));
    }
    EXPECT_EQ(RunLine("trace diff bad.jsonl bad.jsonl").exitCode, 0);
    std::string wrong = begun + construction;
    wrong.replace(wrong.rfind(failure), failure.size(), "null");
    WriteFile("wrong.jsonl", wrong);
    ExpectRefused(
        {"trace", "wrong.jsonl", "--show", "1"},
        "wrong.jsonl:5: failure: expected what was thrown, got null");
}

TEST_F(TraceCommandTest, SequenceOfATraceDoesTheSame) {
    WriteFile("first.yaml", R"(format: 1
steps:
  - {operation: SetOwnerName, record: {OwnerName: 'Li"ne: 9'}}
  - {operation: SetABoardEepromData, expect: 0x2001, record: {"Data[7]": 1, Address: 7, Count: 1}}
  - operation: EnterFactoryMode
)");
    const std::string fault = " --fault FA_WriteEepromData=0x2001";
    EXPECT_EQ(RunLine("sequence first.yaml --trace first.jsonl" + fault).exitCode, 0);
    const std::string made = RunLine("sequence --from-trace first.jsonl").output;
    EXPECT_THAT(made, testing::EndsWith(R"(
format: 1
name: "first.jsonl"
steps:
  - operation: SetOwnerName
    record: {"OwnerName": "Li\"ne: 9"}
  - operation: SetABoardEepromData
    record: {"Data[7]": "0x0001", "Address": "7", "Count": "1"}
    expect: 8193
  - operation: EnterFactoryMode
)"));
    WriteFile("second.yaml", made);
    EXPECT_EQ(RunLine("sequence second.yaml" + fault).exitCode, 0);

    WriteFile("line.jsonl", START + Begin(1, "SetOwnerName") + End(1) + GAP);
    const JIGHOST_RUN lacking = RunLine("sequence --from-trace line.jsonl");
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
