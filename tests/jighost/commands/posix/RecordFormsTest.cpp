// Records at the bench: as they are shown, given and told to programs. What people and programs
// read must not change unseen.
#include "tests/support/posix/CommandForms.h"
#include "tests/support/posix/Shell.h"

using testing::HasSubstr;

namespace {

TEST_F(JighostFormsTest, RecordsAreShownByTheirKinds) {
    const FORM forms[] = {
        {"run GetBodyID --body desk.yaml", 0,
         "ManufactureMonth = 1507\nCodePair         = 42\nCodeDigitHigh    = 3\n"
         "CodeDigitLow     = 9\nSerialNo         = 12345\nGetBodyID: RESULT_SUCCESS (0)\n",
         ""},
        {"run GetDigitalParaAdjData --body desk.yaml", 0,
         "DeltaX = -1\nDeltaY = 2\nGetDigitalParaAdjData: RESULT_SUCCESS (0)\n", ""},
        {"run GetSensorPixelPitch --body desk.yaml", 0,
         "Value = 5.5\nGetSensorPixelPitch: RESULT_SUCCESS (0)\n", ""},
        {"run GetWindowsVistaUniqueID --body desk.yaml", 0,
         "VistaUniqueID = 00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f\n"
         "              = 10 11 12 13\nGetWindowsVistaUniqueID: RESULT_SUCCESS (0)\n",
         ""},
        {"run GetOwnerName --body desk.yaml", 0,
         "OwnerName = \"De\\x5ck\"\nGetOwnerName: RESULT_SUCCESS (0)\n", ""},
        {"run SearchPropertyData PropertyName=PROP_BODY_ID", 0,
         "PropertyName = \"PROP_BODY_ID\"\nPropertyId   = 0x1000006\nPropertySize = 8\n"
         "SearchPropertyData: RESULT_SUCCESS (0)\n",
         ""},
        {"run SaveBodyID", 0, "SaveBodyID: RESULT_SUCCESS (0)\n", ""},
        {"run SetSlitRollingMode AccumulateTime=85", 4,
         "AccumulateTime = 85\nSetSlitRollingMode: RESULT_INVALID_PARAMETER (3)\n",
         "jighost: SetSlitRollingMode failed: [EVNT] nHDCount\n"},
        {"run SearchPropertyData PropertyName=PROP_NONE", 4,
         "PropertyName = \"PROP_NONE\"\nPropertyId   = 0x0000\nPropertySize = 0\n"
         "SearchPropertyData: RESULT_NOT_FOUND (25)\n",
         "jighost: SearchPropertyData failed: [CMNT] Not Found\n"},
    };
    for (const FORM& form : forms) {
        Expect(form);
    }
    std::string eeprom;
    for (const std::string row :
         {"0] ", "8] ", "16]", "24]", "32]", "40]", "48]", "56]", "64]", "72]", "80]", "88]", "96]",
          "104]", "112]", "120]"}) {
        eeprom += "Data[" + row + (row.size() < 4 ? "  =" : " =");
        eeprom += row == "8] " ? " 0x0000 0x0000 0x0a3c" : " 0x0000 0x0000 0x0000";
        eeprom += " 0x0000 0x0000 0x0000 0x0000 0x0000\n";
    }
    Expect(
        {"run SetABoardEepromData 'Data[10]=0x0a3c' Address=10 Count=1", 0,
         eeprom + "Address   = 10\nCount     = 1\nSetABoardEepromData: RESULT_SUCCESS (0)\n", ""});
}

TEST_F(JighostFormsTest, RecordsAreGivenAsBytesAndAsFields) {
    const std::string packed =
        "ManufactureMonth = 1\nCodePair         = 2\nCodeDigitHigh    = 3\n"
        "CodeDigitLow     = 4\nSerialNo         = ";
    const std::string bytes = "01000000 02000000 03000000 04000000 050000";
    const FORM forms[] = {
        {"run SetBodyID --hex '" + bytes + "00'", 0, packed + "5\nSetBodyID: RESULT_SUCCESS (0)\n",
         ""},
        {"run SetBodyID --hex '" + bytes + "fF' SerialNo=0x10", 0,
         packed + "16\nSetBodyID: RESULT_SUCCESS (0)\n", ""},
        {"run SetBodyID --hex '" + bytes + "'", 2, "",
         Refusal(
             "SetBodyID: --hex: expected 20 bytes as hexadecimal digits, two for each, got '" +
             bytes + "'")},
        {"run SetBodyID --hex '" + bytes + "0000'", 2, "",
         Refusal(
             "SetBodyID: --hex: expected 20 bytes as hexadecimal digits, two for each, got '" +
             bytes + "0000'")},
        {"run SetOwnerName --hex " + std::string(64, '6') + " OwnerName=b", 0,
         "OwnerName = \"b\"\nSetOwnerName: RESULT_SUCCESS (0)\n", ""},
        {"run SetTimeZone --hex 010000zz", 2, "",
         Refusal("SetTimeZone: --hex: expected 4 bytes as hexadecimal digits, two for each, got "
                 "'010000zz'")},
        {"run SetTimeZone --hex 0100000", 2, "",
         Refusal("SetTimeZone: --hex: expected 4 bytes as hexadecimal digits, two for each, got "
                 "'0100000'")},
        {"run SetBoardInfDLResonantFrequency --hex 1", 2, "",
         Refusal("SetBoardInfDLResonantFrequency: --hex: expected at most 256 bytes as hexadecimal "
                 "digits, two for each, got '1'")},
        {"run EnterFactoryMode --hex 00", 2, "", Refusal("EnterFactoryMode takes no record")},
        {"run EnterFactoryMode A=1", 2, "", Refusal("EnterFactoryMode takes no record")},
        {"run SetABoardEepromData", 2, "",
         Refusal(
             "SetABoardEepromData reads a record: give a value to Data[0..127], Address, Count")},
        {"run SearchPropertyData", 2, "",
         Refusal("SearchPropertyData reads a record: give a value to PropertyName, PropertyId, "
                 "PropertySize")},
        {"run SetBodyID SerialNo", 2, "",
         Refusal("SetBodyID: expected Field=value, got 'SerialNo'")},
        {"run SetBodyID SerialNo=-1", 2, "",
         Refusal("SetBodyID: SerialNo: expected a number from 0 to 4294967295, got '-1'")},
        {"run SetABoardEepromData 'Data[0]=4294967296'", 2, "",
         Refusal("SetABoardEepromData: Data[0]: expected a number from 0 to 4294967295, got "
                 "'4294967296'")},
        {"run SetSoundVolume Volume=2147483648", 2, "",
         Refusal("SetSoundVolume: Volume: expected a number from -2147483648 to 2147483647, got "
                 "'2147483648'")},
        {"run GetSensorPixelPitch Value=5.5x", 2, "",
         Refusal("GetSensorPixelPitch: Value: expected a floating-point number, got '5.5x'")},
        {"run GetSensorPixelPitch Value=", 2, "",
         Refusal("GetSensorPixelPitch: Value: expected a floating-point number, got ''")},
        {"run SetFilePrefix FilePrefix=a", 2, "", Refusal("SetFilePrefix takes no record")},
        {"run SetOwnerName OwnerName=123456789012345678901234567890123", 2, "",
         Refusal("SetOwnerName: OwnerName: expected a text of at most 32 characters, got "
                 "'123456789012345678901234567890123'")},
        {"run SetBoardInfDLResonantFrequency Data=0", 2, "",
         Refusal("SetBoardInfDLResonantFrequency: Data: expected at most 256 bytes as hexadecimal "
                 "digits, two for each, got '0'")},
    };
    for (const FORM& form : forms) {
        Expect(form);
    }
    for (const std::string field :
         {"Data[128]", "Data", "Data[1", "Data[]", "Data[x]", "Address[0]"}) {
        EXPECT_THAT(
            RunJighost({"run", "SetABoardEepromData", field + "=1"}).errors,
            HasSubstr(
                "SetABoardEepromData has no field '" + field +
                "'; its record has Data[0..127], Address, Count"));
    }
    EXPECT_EQ(
        RunJighost({"run", "SetOwnerName", "OwnerName=12345678901234567890123456789012"}).exitCode,
        0);
}

TEST_F(JighostFormsTest, RunsAreDocumentsForPrograms) {
    Expect(
        {"run GetDigitalParaAdjData --body desk.yaml --json", 0, R"({
  "format": 1,
  "operation": "GetDigitalParaAdjData",
  "result": 0,
  "result_name": "RESULT_SUCCESS",
  "error": "",
  "time_ms": T,
  "calls": 1,
  "record": {
    "DeltaX": -1,
    "DeltaY": 2
  },
  "log": [
    "MOMENT [----]",
    "MOMENT [FUNC] GetDigitalParaAdjData",
    "MOMENT [VALU] DeltaX - 4294967295",
    "MOMENT [VALU] DeltaY - 2",
    "MOMENT [FUNC] GetDigitalParaAdjData - 0"
  ],
  "interleaved": []
}
)",
         ""});
    Expect(
        {"run TurnOffDisplay --fault TurnOffDisplay:1=0x2001 --json", 4, R"({
  "format": 1,
  "operation": "TurnOffDisplay",
  "result": 8193,
  "result_name": "event or link code",
  "error": "[EVNT] --fault TurnOffDisplay:1=0x2001",
  "time_ms": T,
  "calls": 1,
  "record": {},
  "log": [
    "MOMENT [----]",
    "MOMENT [FUNC] _TurnOffDisplay",
    "MOMENT [ERR!] - [EVNT] --fault TurnOffDisplay:1=0x2001",
    "MOMENT [FUNC] _TurnOffDisplay - 8193"
  ],
  "interleaved": []
}
)",
         "jighost: TurnOffDisplay failed: [EVNT] --fault TurnOffDisplay:1=0x2001\n"});
    for (const auto& [command, record] :
         {std::pair("GetSensorPixelPitch", "\"Value\": 5.5\n"),
          std::pair(
              "GetWindowsVistaUniqueID",
              "\"VistaUniqueID\": \"00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f 10 11 "
              "12 13\"\n"),
          std::pair("GetFilePrefix", "\"FilePrefix\": \"6W1E\"\n"),
          std::pair(
              "SetABoardEepromData 'Data[1]=7' Address=2 Count=1",
              "\"Data\": [\n      0,\n      7,\n      0,\n")}) {
        EXPECT_THAT(
            RunShell(std::string("\"$0\" run --body desk.yaml --json ") + command).output,
            HasSubstr(std::string("\"record\": {\n    ") + record));
    }
}

}  // namespace
