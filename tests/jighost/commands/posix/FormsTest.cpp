// Bodies, dumps and sequences at the bench, with all that is printed of them: what people and
// programs read must not change unseen.
#include <filesystem>

#include "tests/support/posix/CommandForms.h"
#include "tests/support/posix/Shell.h"

using testing::HasSubstr;

namespace {

// --- Bodies ---

TEST_F(JighostFormsTest, BodiesAreShownWithTheirNames) {
    std::string words;
    for (std::uint8_t word = 0; word < 128; ++word) {
        words += " 00" + Hex({word});
    }
    Expect(
        {"body show desk.yaml", 0,
         "calendar 2009-12-31 23:59:58\neeprom" + words + R"(
0x01000003      4  PROP_SENSOR_PIXEL_PITCH          7c 15 00 00
0x01000006      8  PROP_BODY_ID                     b5 0d 00 00 f9 5d a9 be
0x01000007      8  PROP_FILE_PREFIX                 "6W1E"
0x0100000c     20  PROP_VISTA_UNIQUE_ID             )" +
             "00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f"
             R"( ...
0x02000004     32                                   )" +
             OWNER_BYTES.substr(0, 47) + R"( ...
0x02040002      4                                   41 42 00 00
0x1f000010      4                                   ff ff 02 00
)",
         ""});
    WriteFile(
        "small.yaml", "format: 1\ncalendar: [1, 2, 3, 4, 5, 6, 7, 8, 9]\neeprom: [" +
                          EepromWords(", ") + "]\nproperties: {0x2040002: 01000000}\n");
    Expect(
        {"body show small.yaml --json", 0,
         "{\n  \"format\": 1,\n  \"calendar\": [\n    1,\n    2,\n    3,\n    4,\n    5,\n"
         "    6,\n    7,\n    8,\n    9\n  ],\n  \"eeprom\": [\n    " +
             EepromWords(",\n    ") +
             "\n  ],\n  \"properties\": [\n    {\n      \"id\": 33816578,\n"
             "      \"name\": \"\",\n      \"bytes\": \"01 00 00 00\"\n    }\n  ]\n}\n",
         ""});
    Expect({"body", 2, "", Refusal("A subcommand is required (jighost --help shows the use)")});
    Expect({"body new", 2, "", Refusal("file is required (jighost --help shows the use)")});
    Expect({"", 2, "", Refusal("there is no command given (jighost --help shows all)")});
}

// The list of what a body has is longer than the catalogue, and ends elsewhere.
TEST_F(JighostFormsTest, WrittenBodyIsReadByPeopleToo) {
    ASSERT_EQ(RunShell("\"$0\" run EnterFactoryMode --body desk.yaml").exitCode, 0);
    std::string eeprom;
    for (std::uint8_t word = 0; word < 128; ++word) {
        eeprom += (word % 8 == 0 ? "\n  0x00" : " 0x00") + Hex({word}) + ',';
    }
    EXPECT_EQ(
        ReadFile("desk.yaml"),
        "# What a simulated camera body keeps over power off. jighost writes this file anew\n"
        "# when a run changes it; comments of your own are lost then.\nformat: 2\n"
        "# Seconds, minutes, hours, day, month, year, days of the week and of the year, summer\n"
        "# time.\ncalendar: [58, 59, 23, 31, 12, 2009, 71, 72, 73]\n"
        "# 128 words of 16 bits.\neeprom: [" +
            eeprom + R"(
]
# Bytes by property id; a property that is not here has its factory value.
properties:
  0x01000000: 00 00 00 00  # PROP_TUNING_FLAG
  0x01000003: 7c 15 00 00  # PROP_SENSOR_PIXEL_PITCH
  0x01000006: b5 0d 00 00 f9 5d a9 be  # PROP_BODY_ID
  0x01000007: 36 57 31 45 00 00 00 00  # PROP_FILE_PREFIX
  0x0100000c: 00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f 10 11 12 13  # PROP_VISTA_UNIQUE_ID
  0x02000004: )" +
            OWNER_BYTES + R"(
  0x02040002: 41 42 00 00
  0x1f000010: ff ff 02 00
end: true
)");
}

// --- Dumps ---

TEST_F(JighostFormsTest, DumpsAreToldAndCompared) {
    std::filesystem::create_directory("a");
    std::filesystem::create_directory("b");
    const FORM forms[] = {
        {"dump a --body desk.yaml", 0, "239 files, 3132188 bytes, T s in a\n", ""},
        {"dump b --body desk.yaml --json", 0,
         "{\n  \"format\": 1,\n  \"folder\": \"b\",\n  \"files\": 239,\n  \"bytes\": 3132188,\n"
         "  \"result\": 0,\n  \"result_name\": \"RESULT_SUCCESS\",\n  \"error\": \"\",\n"
         "  \"time_ms\": T\n}\n",
         ""},
        {"dump a --json --fault LoadPropertyData:3=0x2001", 4,
         "{\n  \"format\": 1,\n  \"folder\": \"a\",\n  \"files\": 2,\n  \"bytes\": 8,\n"
         "  \"result\": 8193,\n  \"result_name\": \"event or link code\",\n"
         "  \"error\": \"[EVNT] --fault LoadPropertyData:3=0x2001\",\n  \"time_ms\": T\n}\n",
         Refusal("LoadPropertyData failed at row 3 of 239, PROP_SENSOR_NUMBER: [EVNT] --fault "
                 "LoadPropertyData:3=0x2001, event or link code (8193); the files of the rows "
                 "before are complete")},
        {"dump none", 2, "", Refusal("there is no folder none")},
        {"dump a --fault LoadPropertyData:1=0x2001", 4, "",
         Refusal("LoadPropertyData failed at row 1 of 239, PROP_TUNING_FLAG: "
                 "[EVNT] --fault LoadPropertyData:1=0x2001, event or link code (8193)")},
        {"dump a --fault LoadPropertyData:3=0x2001", 4, "",
         Refusal("LoadPropertyData failed at row 3 of 239, PROP_SENSOR_NUMBER: [EVNT] --fault "
                 "LoadPropertyData:3=0x2001, event or link code (8193); the files of the rows "
                 "before are complete")},
        {"verify a", 0,
         "239 files expected, all there with their sizes; their bytes were not looked at\n", ""},
        {"verify b --body desk.yaml", 0, "239 files expected, all as they should be\n", ""},
        {"verify b --json", 0,
         "{\n  \"format\": 1,\n  \"files_expected\": 239,\n  \"findings\": []\n}\n", ""},
        {"verify none", 2, "", Refusal("there is no folder none")},
        {"diff a none", 2, "", Refusal("there is no folder none")},
    };
    ASSERT_EQ(RunJighost({"dump", "a", "--body", "desk.yaml"}).exitCode, 0);
    for (const FORM& form : forms) {
        Expect(form);
    }
    ASSERT_EQ(RunJighost({"dump", "a", "--body", "desk.yaml"}).exitCode, 0);
    WriteFile("b/01000006.bin", std::string("\xb5\x0d\x00\x00\xf9\x5d\xa9\xbf", 8));
    Expect(
        {"verify b --body desk.yaml", 5,
         "bytes    01000006.bin  PROP_BODY_ID                      1 byte differs, at offset 7\n"
         "239 files expected, 1 finding\n",
         ""});
    Expect(
        {"diff a b --json", 5, R"({
  "format": 1,
  "compared": 239,
  "missing": 0,
  "differences": [
    {
      "file": "01000006.bin",
      "property": "PROP_BODY_ID",
      "bytes": 1,
      "first": 7,
      "left": "be",
      "right": "bf"
    }
  ]
}
)",
         ""});
    WriteFile("b/01000006.bin", std::string("\xb5\x0d", 2));
    std::filesystem::remove("a/01000007.bin");
    Expect(
        {"diff a b", 5,
         "01000006.bin  PROP_BODY_ID                      6 bytes differ, the first at offset 2\n"
         "    left:  00 00 f9 5d a9 be\n    right: the file ends\n"
         "01000007.bin  PROP_FILE_PREFIX                  only in b\n"
         "238 properties in both, 2 differences\n",
         ""});
    Expect(
        {"verify b --json", 5, R"({
  "format": 1,
  "files_expected": 239,
  "findings": [
    {
      "kind": "length",
      "file": "01000006.bin",
      "property": "PROP_BODY_ID",
      "text": "2 bytes, 8 expected"
    }
  ]
}
)",
         ""});
    WriteFile("b/01000006.bin", ReadFile("a/01000006.bin"));
    std::filesystem::remove("a/01000006.bin");
    std::filesystem::remove("b/01000007.bin");
    Expect(
        {"diff a b --json", 5, R"({
  "format": 1,
  "compared": 237,
  "missing": 1,
  "differences": [
    {
      "file": "01000006.bin",
      "property": "PROP_BODY_ID",
      "only_in": "b"
    }
  ]
}
)",
         ""});
    std::filesystem::create_directories("c/01000000.bin");
    Expect(
        {"dump c", 4, "",
         Refusal("LoadPropertyData failed at row 1 of 239, PROP_TUNING_FLAG: [STDF] _sopen_s, "
                 "RESULT_RUNTIME_ERROR (7)")});
}

TEST_F(JighostFormsTest, FailedDumpIsReplayedInAFolderThatGoesAgain) {
    std::filesystem::create_directory("a");
    std::filesystem::create_directory("scratch");
    const std::string fault = "LoadPropertyData:3=0x2001";
    ASSERT_EQ(RunShell("\"$0\" dump a --trace dump.jsonl --fault " + fault).exitCode, 4);
    Expect({"replay dump.jsonl", 0, "1 operation, 3 calls as recorded\n", ""});
    const std::string trace = ReadFile("dump.jsonl");
    const std::size_t result = trace.rfind("\"result\":8193");
    ASSERT_NE(result, std::string::npos);
    WriteFile("other.jsonl", std::string(trace).replace(result + 9, 4, "8195"));
    Expect(
        {"replay other.jsonl", 5,
         "0 operations, 3 calls as recorded\noperation 1, LoadPropertyData, differs in result\n"
         "  expected: event or link code (8195)\n  made:     event or link code (8193)\n",
         ""});
    ASSERT_EQ(RunShell("TMPDIR=scratch \"$0\" replay dump.jsonl").exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_empty("scratch"));
}

// --- Sequences ---

TEST_F(JighostFormsTest, SequencesAreToldStepByStep) {
    WriteFile("steps.yaml", R"(format: 1
name: a desk's steps
steps:
  - {operation: GetDigitalParaAdjData, name: deltas, on_unexpected: stop}
  - {operation: SetSlitRollingMode, record: {AccumulateTime: 85}, on_unexpected: retry 1}
)");
    const std::string failure =
        "expected success, got RESULT_INVALID_PARAMETER (3): [EVNT] nHDCount\n";
    Expect(
        {"sequence steps.yaml --body desk.yaml", 4,
         "  1  deltas T ms  RESULT_SUCCESS (0)\n     DeltaX = -1\n     DeltaY = 2\n"
         "  2  SetSlitRollingMode T ms  RESULT_INVALID_PARAMETER (3), attempt 2, not as expected\n"
         "     " +
             failure + "a desk's steps: 2 of 2 steps run, 1 not as expected, T ms\n",
         "jighost: step 2, SetSlitRollingMode: " + failure});
    const std::pair<std::string, std::string> refusals[] = {
        {"--from 0", "expected a step by its name or by a number from 1 to 2, got '0'"},
        {"--from 3", "expected a step by its name or by a number from 1 to 2, got '3'"},
        {"--until none", "expected a step by its name or by a number from 1 to 2, got 'none'"},
        {"--from 2 --until 1", "step 1 comes ahead of step 2"},
        {"--from 2 --until deltas",
         "expected a step by its name or by a number from 1 to 2, got 'deltas'"},
    };
    for (const auto& [options, line] : refusals) {
        Expect({"sequence steps.yaml " + options, 2, "", Refusal(line)});
    }
    EXPECT_THAT(
        RunShell("\"$0\" sequence steps.yaml --from 2 --until 2").output,
        HasSubstr("\na desk's steps: 1 of 2 steps run, 1 not as expected"));
}

TEST_F(JighostFormsTest, WrongSequencesAreToldWithTheirLines) {
    const std::pair<std::string, std::string> wrong[] = {
        {"format: 1\n", "1: expected steps: with a step at least, got none"},
        {"format: 1\nsteps: []\n", "1: expected steps: with a step at least, got none"},
        {"format: 1\nsteps: 7\n", "2: expected a list of steps, got '7'"},
        {"format: 1\nsteps:\n  - 7\n", "3: expected a step with its operation, got '7'"},
        {"format: 1\nsteps:\n  - name: a\n", "3: expected a step with its operation, got none"},
        {"format: 1\nsteps:\n  - operation: [a]\n",
         "3: expected the name of an operation, got a list"},
        {"format: 1\nsteps:\n  - operation: LoadPropertyData\n",
         "1: expected folder: for LoadPropertyData, got none"},
        {"format: 1\nfolder: none\nsteps:\n  - operation: LoadPropertyData\n",
         "2: there is no folder none"},
        {"format: 1\nsteps:\n  - operation: SaveBodyID\n    on_unexpected: retry 0\n",
         "4: expected stop, continue or retry N after M ms, then stop or continue; "
         "N from 1 to 1000, M up to 3600000, got 'retry 0'"},
        {"format: 1\nsteps:\n  - operation: SaveBodyID\n    on_unexpected: retry 1001\n",
         "4: expected stop, continue or retry N after M ms, then stop or continue; "
         "N from 1 to 1000, M up to 3600000, got 'retry 1001'"},
        {"format: 1\nsteps:\n  - operation: SetTimeZone\n    record: {Value: []}\n",
         "4: expected the value of a field, got a list"},
        {"format: 2\nsteps:\n  - operation: SaveBodyID\n    wait: 0 ms\n",
         "4: expected a time from 1 ms to 3600000 ms, got '0 ms'"},
        {"format: 2\nsteps:\n  - operation: SaveBodyID\n    time_limit: 3600001 ms\n",
         "4: expected a time from 1 ms to 3600000 ms, got '3600001 ms'"},
        {"format: 1\nsteps:\n  - operation: SetTimeZone\n    record: 5\n",
         "4: expected the fields of a record, got '5'"},
    };
    for (const auto& [text, line] : wrong) {
        WriteFile("wrong.yaml", text);
        Expect({"sequence wrong.yaml", 2, "", Refusal("wrong.yaml:" + line)});
    }
}

}  // namespace
