// Records at the bench: as they are shown, given and told to programs. What people and programs
// read must not change unseen.
#include "tests/support/posix/CommandForms.h"
#include "tests/support/posix/Shell.h"

using testing::HasSubstr;

namespace {

/// The name of the operation in what stands behind "jighost run".
std::string OperationIn(const std::string& command) {
    return command.substr(0, command.find(' '));
}

/// The EEPROM's words as they are shown, all zero but for the tenth.
std::string ShownEeprom() {
    std::string shown;
    for (int word = 0; word < 128; word += 8) {
        const std::string name = "Data[" + std::to_string(word) + "]";
        shown += name + std::string(9 - name.size(), ' ') + " = 0x0000 0x0000 ";
        shown += word == 8 ? "0x0a3c" : "0x0000";
        shown += " 0x0000 0x0000 0x0000 0x0000 0x0000\n";
    }
    return shown;
}

TEST_F(JighostFormsTest, RecordsAreGivenAndShownByTheirKinds) {
    const std::string packed =
        "ManufactureMonth = 1\nCodePair         = 2\nCodeDigitHigh    = 3\n"
        "CodeDigitLow     = 4\nSerialNo         = ";
    const std::string bytes = "01000000 02000000 03000000 04000000 050000";
    const std::pair<std::string, std::string> runs[] = {
        {"GetBodyID",
         "ManufactureMonth = 1507\nCodePair         = 42\nCodeDigitHigh    = 3\n"
         "CodeDigitLow     = 9\nSerialNo         = 12345\n"},
        {"GetDigitalParaAdjData", "DeltaX = -1\nDeltaY = 2\n"},
        {"GetSensorPixelPitch", "Value = 5.5\n"},
        {"GetWindowsVistaUniqueID",
         "VistaUniqueID = 00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f\n"
         "              = 10 11 12 13\n"},
        {"GetOwnerName", "OwnerName = \"De\\x5ck\"\n"},
        {"SearchPropertyData PropertyName=PROP_BODY_ID",
         "PropertyName = \"PROP_BODY_ID\"\nPropertyId   = 0x1000006\nPropertySize = 8\n"},
        {"SaveBodyID", ""},
        {"SetABoardEepromData 'Data[10]=0x0a3c' Address=10 Count=1",
         ShownEeprom() + "Address   = 10\nCount     = 1\n"},
        {"SetBodyID --hex '" + bytes + "00'", packed + "5\n"},
        {"SetBodyID --hex '" + bytes + "fF' SerialNo=0x10", packed + "16\n"},
        {"SetOwnerName --hex " + std::string(64, '6') + " OwnerName=b", "OwnerName = \"b\"\n"},
        {"SetOwnerName OwnerName=12345678901234567890123456789012",
         "OwnerName = \"12345678901234567890123456789012\"\n"},
    };
    for (const auto& [command, record] : runs) {
        const std::string end = OperationIn(command) + ": RESULT_SUCCESS (0)\n";
        Expect({"run " + command + " --body desk.yaml", 0, record + end, ""});
    }
    Expect(
        {"run SearchPropertyData PropertyName=PROP_NONE", 4,
         "PropertyName = \"PROP_NONE\"\nPropertyId   = 0x0000\nPropertySize = 0\n"
         "SearchPropertyData: RESULT_NOT_FOUND (25)\n",
         Refusal("SearchPropertyData failed: [CMNT] Not Found")});
}

TEST_F(JighostFormsTest, RunsAreDocumentsForPrograms) {
    ExpectDocument(
        {"run GetDigitalParaAdjData --body desk.yaml --json", 0,
         R"({"format":1,"operation":"GetDigitalParaAdjData","result":0,)"
         R"("result_name":"RESULT_SUCCESS","error":"","time_ms":0,"calls":1,)"
         R"("record":{"DeltaX":-1,"DeltaY":2},)"
         R"("log":["MOMENT [----]","MOMENT [FUNC] GetDigitalParaAdjData",)"
         R"("MOMENT [VALU] DeltaX - 4294967295","MOMENT [VALU] DeltaY - 2",)"
         R"("MOMENT [FUNC] GetDigitalParaAdjData - 0"],"interleaved":[]})",
         ""});
    ExpectDocument(
        {"run TurnOffDisplay --fault TurnOffDisplay:1=0x2001 --json", 4,
         R"({"format":1,"operation":"TurnOffDisplay","result":8193,)"
         R"("result_name":"event or link code","error":"[EVNT] --fault TurnOffDisplay:1=0x2001",)"
         R"("time_ms":0,"calls":1,"record":{},)"
         R"("log":["MOMENT [----]","MOMENT [FUNC] _TurnOffDisplay",)"
         R"("MOMENT [ERR!] - [EVNT] --fault TurnOffDisplay:1=0x2001",)"
         R"("MOMENT [FUNC] _TurnOffDisplay - 8193"],"interleaved":[]})",
         Refusal("TurnOffDisplay failed: [EVNT] --fault TurnOffDisplay:1=0x2001")});
    const std::pair<std::string, std::string> records[] = {
        {"GetSensorPixelPitch", "\"Value\": 5.5\n"},
        {"GetWindowsVistaUniqueID",
         "\"VistaUniqueID\": \"00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f 10 11 12 13\"\n"},
        {"GetFilePrefix", "\"FilePrefix\": \"6W1E\"\n"},
        {"SetABoardEepromData 'Data[1]=7' Address=2 Count=1",
         "\"Data\": [\n      0,\n      7,\n      0,\n"},
    };
    for (const auto& [command, record] : records) {
        EXPECT_THAT(
            RunShell("\"$0\" run --body desk.yaml --json " + command).output,
            HasSubstr("\"record\": {\n    " + record));
    }
}

}  // namespace
