// Bodies, dumps and sequences at the bench, with all that is printed of them: what people and
// programs read must not change unseen.
#include <filesystem>

#include "tests/support/posix/CommandForms.h"
#include "tests/support/posix/Shell.h"

namespace {

// --- Bodies ---

/// The EEPROM's words, each behind `ahead`, eight to a line with what begins it.
std::string EepromDigits(const char* pszLine, const char* pszAhead, const char* pszBehind) {
    std::string digits;
    for (std::uint8_t word = 0; word < 128; ++word) {
        digits += (word % 8 == 0 ? pszLine : "") + (pszAhead + Hex({word})) + pszBehind;
    }
    return digits;
}

TEST_F(JighostFormsTest, BodiesAreShownWithTheirNames) {
    Expect(
        {"body show desk.yaml", 0,
         "calendar 2009-12-31 23:59:58\neeprom" + EepromDigits("", " 00", "") + R"(
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
    ExpectDocument(
        {"body show small.yaml --json", 0,
         R"({"format":1,"calendar":[1,2,3,4,5,6,7,8,9],"eeprom":[)" + EepromWords(",") +
             R"(],"properties":[{"id":33816578,"name":"","bytes":"01 00 00 00"}]})",
         ""});
}

// The list of what a body has is longer than the catalogue, and ends elsewhere.
TEST_F(JighostFormsTest, WrittenBodyIsReadByPeopleToo) {
    ASSERT_EQ(RunShell("\"$0\" run EnterFactoryMode --body desk.yaml").exitCode, 0);
    EXPECT_EQ(
        ReadFile("desk.yaml"),
        "# What a simulated camera body keeps over power off. jighost writes this file anew\n"
        "# when a run changes it; comments of your own are lost then.\nformat: 2\n"
        "# Seconds, minutes, hours, day, month, year, days of the week and of the year, summer\n"
        "# time.\ncalendar: [58, 59, 23, 31, 12, 2009, 71, 72, 73]\n"
        "# 128 words of 16 bits.\neeprom: [" +
            EepromDigits("\n ", " 0x00", ",") + R"(
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

TEST_F(JighostFormsTest, DumpsAreTold) {
    for (const char* pszFolder : {"a", "b", "cut", "kept/01000000.bin"}) {
        std::filesystem::create_directories(pszFolder);
    }
    const std::string failure = "LoadPropertyData failed at row ";
    const FORM forms[] = {
        {"dump a --body desk.yaml", 0, "239 files, 3132188 bytes, T s in a\n", ""},
        {"dump cut --fault LoadPropertyData:1=0x2001", 4, "",
         Refusal(
             failure + "1 of 239, PROP_TUNING_FLAG: "
                       "[EVNT] --fault LoadPropertyData:1=0x2001, event or link code (8193)")},
        {"dump kept", 4, "",
         Refusal(
             failure + "1 of 239, PROP_TUNING_FLAG: [STDF] _sopen_s, RESULT_RUNTIME_ERROR (7)")},
        {"verify a", 0,
         "239 files expected, all there with their sizes; their bytes were not looked at\n", ""},
        {"verify a --body desk.yaml", 0, "239 files expected, all as they should be\n", ""},
        {"verify a --json", 0,
         "{\n  \"format\": 1,\n  \"files_expected\": 239,\n  \"findings\": []\n}\n", ""},
    };
    for (const FORM& form : forms) {
        Expect(form);
    }
    ExpectDocument(
        {"dump b --body desk.yaml --json", 0,
         R"({"format":1,"folder":"b","files":239,"bytes":3132188,"result":0,)"
         R"("result_name":"RESULT_SUCCESS","error":"","time_ms":0})",
         ""});
    ExpectDocument(
        {"dump cut --json --fault LoadPropertyData:3=0x2001", 4,
         R"({"format":1,"folder":"cut","files":2,"bytes":8,"result":8193,)"
         R"("result_name":"event or link code",)"
         R"("error":"[EVNT] --fault LoadPropertyData:3=0x2001","time_ms":0})",
         Refusal(
             failure + "3 of 239, PROP_SENSOR_NUMBER: [EVNT] --fault LoadPropertyData:3=0x2001, "
                       "event or link code (8193); the files of the rows before are complete")});
}

TEST_F(JighostFormsTest, DumpsAreCompared) {
    std::filesystem::create_directory("a");
    ASSERT_EQ(RunJighost({"dump", "a", "--body", "desk.yaml"}).exitCode, 0);
    std::filesystem::copy("a", "b");
    WriteFile("b/01000006.bin", std::string("\xb5\x0d\x00\x00\xf9\x5d\xa9\xbf", 8));
    Expect(
        {"verify b --body desk.yaml", 5,
         "bytes    01000006.bin  PROP_BODY_ID                      1 byte differs, at offset 7\n"
         "239 files expected, 1 finding\n",
         ""});
    ExpectDocument(
        {"diff a b --json", 5,
         R"({"format":1,"compared":239,"missing":0,"differences":[{"file":"01000006.bin",)"
         R"("property":"PROP_BODY_ID","bytes":1,"first":7,"left":"be","right":"bf"}]})",
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
    ExpectDocument(
        {"verify b --json", 5,
         R"({"format":1,"files_expected":239,"findings":[{"kind":"length",)"
         R"("file":"01000006.bin","property":"PROP_BODY_ID","text":"2 bytes, 8 expected"}]})",
         ""});
    std::filesystem::copy("a/01000006.bin", "b", std::filesystem::copy_options::overwrite_existing);
    std::filesystem::remove("a/01000006.bin");
    std::filesystem::remove("b/01000007.bin");
    ExpectDocument(
        {"diff a b --json", 5,
         R"({"format":1,"compared":237,"missing":1,"differences":[{"file":"01000006.bin",)"
         R"("property":"PROP_BODY_ID","only_in":"b"}]})",
         ""});
}

TEST_F(JighostFormsTest, FailedDumpIsReplayedInAFolderThatGoesAgain) {
    std::filesystem::create_directory("a");
    std::filesystem::create_directory("scratch");
    const std::string dump = "\"$0\" dump a --trace dump.jsonl --fault LoadPropertyData:3=0x2001";
    ASSERT_EQ(RunShell(dump).exitCode, 4);
    Expect({"replay dump.jsonl", 0, "1 operation, 3 calls as recorded\n", ""});
    ASSERT_EQ(RunShell("TMPDIR=scratch \"$0\" replay dump.jsonl").exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_empty("scratch"));
    ASSERT_EQ(RunShell("sed -i 's/\"result\":8193/\"result\":8195/' dump.jsonl").exitCode, 0);
    Expect(
        {"replay dump.jsonl", 5,
         "0 operations, 3 calls as recorded\noperation 1, LoadPropertyData, differs in result\n"
         "  expected: event or link code (8195)\n  made:     event or link code (8193)\n",
         ""});
}

// --- Sequences ---

TEST_F(JighostFormsTest, StepsAreFoundByNumberAndName) {
    WriteFile("steps.yaml", R"(format: 1
name: a desk's steps
steps:
  - {operation: GetDigitalParaAdjData, name: deltas}
  - {operation: SaveBodyID}
)");
    const std::string deltas = "  1  deltas T ms  RESULT_SUCCESS (0)\n     DeltaX = -1\n";
    Expect(
        {"sequence steps.yaml --body desk.yaml --until deltas", 0,
         deltas + "     DeltaY = 2\na desk's steps: 1 of 2 steps run, 0 not as expected, T ms\n",
         ""});
    Expect(
        {"sequence steps.yaml --from 2 --until 2", 0,
         "  2  SaveBodyID T ms  RESULT_SUCCESS (0)\n"
         "a desk's steps: 1 of 2 steps run, 0 not as expected, T ms\n",
         ""});
}

}  // namespace
