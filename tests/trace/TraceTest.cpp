// Traces, their replay, and faults made to order.
#include "jighost/operations/OperationTable.h"
#include "jighost/session/Trace.h"
#include "platform/Program.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"
#include "tests/support/SupportTable.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace {

class JighostTraceTest : public testing::Test {
  protected:
    /// Calls of every kind, on a body that is not the factory-new one, and one that fails.
    static void RecordEveryKind() {
        EXPECT_EQ(RunJighost({"body", "new", "body.yaml"}).exitCode, 0);
        WriteFile("sequence.yaml", R"(format: 1
steps:
  - {operation: SetOwnerName, record: {OwnerName: Line 9}}
  - operation: SaveOwnerName
)");
        EXPECT_EQ(RunJighost({"sequence", "sequence.yaml", "--body", "body.yaml"}).exitCode, 0);
        WriteFile("sequence.yaml", R"(format: 1
steps:
  - {operation: GetOwnerName, expect_fields: {OwnerName: Line 9}}
  - operation: GetDateTime
  - operation: GetCameraLog
  - operation: CheckLensActivity
  - operation: CopyDLResonantFrequency
  - {operation: SetABoardEepromData, expect: 0x2001, record: {"Data[7]": 1, Address: 7, Count: 1}}
)");
        const JIGHOST_RUN run = RunJighost(
            {"sequence", "sequence.yaml", "--body", "body.yaml", "--fault",
             "FA_WriteEepromData=0x2001", "--trace", "trace.jsonl"});
        EXPECT_EQ(run.exitCode, 0) << run.errors;
    }

    /// Replays the recorded trace with a text in it exchanged for another.
    static JIGHOST_RUN ReplayChanged(const std::string& from, const std::string& to) {
        std::string text = ReadFile("trace.jsonl");
        const std::size_t place = text.find(from);
        EXPECT_NE(place, std::string::npos) << from;
        WriteFile("changed.jsonl", text.replace(place, from.size(), to));
        return RunJighost({"replay", "changed.jsonl"});
    }

  private:
    FreshFolder m_Folder;
};

TEST_F(JighostTraceTest, AnswersComeFromTheTraceAndNotFromTheBody) {
    RecordEveryKind();
    const JIGHOST_RUN run = RunJighost({"replay", "trace.jsonl"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.output, StartsWith("6 operations, ")) << run.errors;
    EXPECT_EQ(ReplayChanged("\"format\":3", "\"format\":1").exitCode, 0);
}

TEST_F(JighostTraceTest, FirstDifferenceOrWrongLineIsTold) {
    RecordEveryKind();
    for (const YAML::Node& row : TableRows("trace/changes.yaml", 10)) {
        const auto text = [&](const char* pszKey) { return row[pszKey].as<std::string>(); };
        const JIGHOST_RUN run = ReplayChanged(text("from"), text("to"));
        EXPECT_EQ(run.exitCode, row["exit"].as<int>()) << text("to");
        if (run.exitCode == 2) {
            EXPECT_EQ(run.errors, "jighost: changed.jsonl:" + text("told") + "\n");
        } else {
            EXPECT_THAT(run.output, HasSubstr(text("told")));
        }
    }
    // Nothing could write it again as it was.
    EXPECT_EQ(
        ReplayChanged("\"GetOwnerName\"", "\"GetOwner\xff\"").errors,
        "jighost: changed.jsonl:2: name: expected a text, got \"GetOwner\\xff\"\n");
}

TEST_F(JighostTraceTest, HostileFilesEndInOneLine) {
    const auto expect = [](const std::vector<std::string>& arguments, const std::string& line) {
        const JIGHOST_RUN run = RunJighost(arguments);
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.errors, "jighost: " + line + "\n");
    };
    const std::size_t depth = 80'000;
    WriteFile(
        "deep.jsonl", "{\"format\":1,\"content\":\"jighost trace\"}\n{\"entry\":" +
                          std::string(depth, '[') + std::string(depth, ']') + "}\n");
    expect(
        {"replay", "deep.jsonl"},
        "deep.jsonl:2: entry: expected a text, got " + std::string(40, '[') + "...");
    WriteFile("start.jsonl", "{\"format\":1,\"content\":\"jighost trace\"}\n");
    expect({"replay", "start.jsonl"}, "start.jsonl: expected an operation at least, got none");
    WriteFile(
        "large.jsonl", ReadFile("start.jsonl") +
                           R"({"entry":"operation","operation":1,"name":"GetCameraLog","record":""}
{"entry":"call","operation":1,"call":1,"function":"CEventProcedure::GetReturnData","name":"","id":0,"value":1048577,"from_list":false,"sent":""}
{"entry":"answer","operation":1,"call":1,"received":"","size_left":1048577,"result":0,"failure":null}
)");
    expect(
        {"replay", "large.jsonl"},
        "large.jsonl:2: GetCameraLog can't be replayed: the trace lacks an answer of more than "
        "1048576 bytes");
    std::string wide;
    wide.resize(16'000'001, '#');
    WriteFile("wide.jsonl", ReadFile("start.jsonl") + wide + "\n");
    expect({"replay", "wide.jsonl"}, "wide.jsonl:2: expected at most 16000000 bytes in a line");
    for (const char mark : {',', '\n'}) {
        WriteFile("wide.yaml", std::string(2'000'001, mark));
        expect(
            {"sequence", "wide.yaml"},
            "wide.yaml: expected at most 2000000 lists, maps, elements and lines");
    }
    WriteFile("long.yaml", wide);
    expect({"sequence", "long.yaml"}, "can't read long.yaml: expected at most 16000000 bytes");
    std::vector<std::string> devices = {"."};
    if (!IS_WINDOWS) {
        devices.insert(devices.end(), {"/dev/zero", "/dev/full"});
    }
    for (const std::string& device : devices) {
        const std::string line = "can't read " + device + ": it is no regular file";
        expect({"replay", device}, line);
        expect({"sequence", device}, line);
        expect({"run", "GetBodyID", "--body", device}, line);
        expect({"body", "show", device}, line);
        expect({"log", device}, device + " is no file: expected a log of the module");
    }
}

TEST_F(JighostTraceTest, ShownCallsStandBetweenTheLogLinesAroundThem) {
    const std::string trace = RunJighost({"run", "SetFilePrefix", "--trace"}).errors;
    std::size_t place = 0;
    for (const char* pszText :
         {"SetFilePrefix\n", "[FUNC] GetBodyID\n", "   1 Get 0x1000006 8 -> ", "[VALU] BodyID",
          "   2 Set 0x1000007 8: ", "[FUNC] SetFilePrefix - 0\n",
          "SetFilePrefix: RESULT_SUCCESS (0), 2 calls, "}) {
        place = trace.find(pszText, place);
        ASSERT_NE(place, std::string::npos) << pszText << " is missing in\n" << trace;
    }
}

TEST_F(ModuleTest, TracedCallIsInTheFileBeforeItIsMade) {
    const std::unique_ptr<Trace> trace = NewTrace("trace.jsonl");
    std::string textThen;
    SimulatedBody::Observe([&](const SimulatedBody::CALL& call, bool complete) {
        trace->OnCall(call, complete);
        if (!complete && call.function == "CProperty::Set") {
            textThen = ReadFile("trace.jsonl");
        }
    });
    trace->BeginOperation(*FindOperation("SetFilePrefix"), {});
    EXPECT_EQ(Run("SetFilePrefix"), 0);
    SimulatedBody::Observe({});

    // What a process that was killed in this call would leave; and one killed while writing.
    WriteFile("killed.jsonl", textThen + "{\"entry\":\"ans");
    const JIGHOST_RUN run = RunJighost({"replay", "killed.jsonl"});
    EXPECT_EQ(run.exitCode, 5) << run.errors;
    EXPECT_THAT(run.output, StartsWith("0 operations, 1 call as recorded\n"));
    EXPECT_THAT(run.output, HasSubstr("cut off at SetFilePrefix, call 2, Set 0x1000007 8: "));
    EXPECT_THAT(run.output, HasSubstr(", which never returned\n"));
}

}  // namespace
