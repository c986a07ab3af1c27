// A body for commands to work on, and their output without what differs from run to run.
#include "tests/support/posix/CommandForms.h"

#include <regex>

#include "jighost/output/Json.h"
#include "tests/support/posix/Shell.h"

/// Moments and durations differ from run to run.
static std::string WithoutTimes(const std::string& text) {
    static const std::regex moment("\\d{4}/\\d\\d/\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}");
    static const std::regex duration(" +[0-9]+\\.[0-9]+ (m?s)");
    static const std::regex key("\"time_ms\": [-+.0-9e]+");
    const std::string withoutMoments = std::regex_replace(text, moment, "MOMENT");
    const std::string withoutKeys = std::regex_replace(withoutMoments, key, "\"time_ms\": 0");
    return std::regex_replace(withoutKeys, duration, " T $1");
}

static void ExpectRun(const FORM& form, std::string (*read)(const std::string& output)) {
    const JIGHOST_RUN run = RunShell("\"$0\" " + form.command);
    EXPECT_EQ(run.exitCode, form.exitCode) << form.command;
    EXPECT_EQ(read(run.output), form.output) << form.command;
    EXPECT_EQ(WithoutTimes(run.errors), form.errors) << form.command;
}

void Expect(const FORM& form) {
    ExpectRun(form, WithoutTimes);
}

void ExpectDocument(const FORM& form) {
    ExpectRun(form, [](const std::string& output) {
        return Json::parse(WithoutTimes(output), nullptr, false).dump();
    });
}

std::string Refusal(const std::string& line) {
    return "jighost: " + line + "\n";
}

std::string EepromWords(const char* pszSeparator) {
    std::string words;
    for (int word = 0; word < 128; ++word) {
        words += (word > 0 ? pszSeparator : "") + std::to_string(word);
    }
    return words;
}

JighostFormsTest::JighostFormsTest() {
    WriteFile(
        "desk.yaml",
        "format: 2\ncalendar: [58, 59, 23, 31, 12, 2009, 71, 72, 73]\n"
        "eeprom: [" +
            EepromWords(", ") + R"(]
properties:
  0x01000003: 7c 15 00 00
  0x01000006: b50d0000 f95da9be
  0x01000007: 36 57 31 45 00 00 00 00
  0x0100000C: 00 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f 10 11 12 13
  0x02000004: )" +
            OWNER_BYTES + R"(
  0x02040002: 41 42 00 00
  0x1F000010: ff ff 02 00
end: true
)");
}
