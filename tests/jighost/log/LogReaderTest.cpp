// jighost log, held against logs written here by hand: none of them came from the module.
#include <gmock/gmock.h>

#include <algorithm>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>

#include "jighost/log/LogReader.h"
#include "platform/Program.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::HasSubstr;

/// A `@` stands for a time, which the camera link gives in a form of its own.
static std::string Timed(std::string text) {
    const std::string time = "2026/11/22 20:10:29.123 ";
    for (std::size_t at = text.find('@'); at != std::string::npos; at = text.find('@', at)) {
        text.replace(at, 1, time);
        at += time.size();
    }
    return text;
}

/// What a reader makes of a timed log that comes in pieces of this size: a line for each operation,
/// two blanks for each step of depth.
static std::string Read(const std::string& written, std::size_t pieceSize = 7) {
    const std::string log = Timed(written);
    std::string text;
    LogReader reader([&text](auto operations) {
        for (const LOGGED_OPERATION& operation : operations) {
            text += std::string(2 * operation.depth, ' ') + operation.name + ' ' +
                    (operation.result ? std::to_string(*operation.result) : "open") +
                    (operation.error.empty() ? "" : " " + operation.error) +
                    (operation.bInterleaved ? " interleaved" : "") +
                    (operation.bOpened ? "" : " unopened") + '\n';
        }
    });
    for (std::size_t start = 0; start < log.size(); start += pieceSize) {
        reader.Add(std::string_view(log).substr(start, pieceSize));
    }
    reader.End();
    return text;
}

static const std::string FIRST = "@[----]\n@[FUNC] GetLanguage\n@[FUNC] GetLanguage - 0\n";
static const std::string OPENED = FIRST + "@[----]\n@[FUNC] SetBodyID\n";
static const std::string OTHER = "@[----]\n@[FUNC] GetBodyID\n";

TEST(JighostLogTest, OperationsAreToldFromAllElseThatALogHolds) {
    const std::string rubbish = std::string("\0\xff[[FUNC] [FUNC", 15) + std::string(70000, '[');
    const std::pair<std::string, std::string> logs[] = {
        // Rubbish and missing lines.
        {"GetTimeZone - 0\r\n[FUNC] GetLanguage - 1\r\n" + rubbish + "\n2026 [FUNC] GetBodyID\r\n" +
             rubbish +
             "\r\n[FUNC] GetBodyID - x\r\n2026 [FUNC] GetBodyID - 0\r\n"
             "[FUNC] Outer\r\n[FUNC] Inner\r\n[ERR!] - lost\r\n[FUNC] Outer - 1\r\n"
             "[FUNC] Killed\r\n[CMNT]  TuneBench.t460 Initialize\r\n"
             "[FUNC] CutOff\r\n[FUNC] CutOff - 1",
         "GetLanguage 1 unopened\nGetBodyID 0\nOuter 1 lost\n  Inner open\nKilled open\n"
         "CutOff open\n"},
        // An operation within another one, each with its own error.
        {"12:00 [----]\n12:00 [FUNC] SetFilePrefix\n12:00 [----]\n12:00 [FUNC] GetBodyID\n"
         "12:00 [ERR!] - [VALU] pBodyID\n12:00 [FUNC] GetBodyID - 3\n"
         "12:00 [ERR!] - [FUNC] GetBodyID\n12:00 [FUNC] SetFilePrefix - 3\n"
         "12:01 [----]\n12:01 [FUNC] MPUReset\n"
         "[ERR!] UnExpected Exception\n12:01 [FUNC] MPUReset - 33\n",
         "SetFilePrefix 3 [FUNC] GetBodyID\n  GetBodyID 3 [VALU] pBodyID\n"
         "MPUReset 33 UnExpected Exception\n"},
        // Values that look like closing lines, and odd closing lines.
        {"[FUNC] _GetState\n[FUNC] State - -1\n[FUNC] _GetState - 0\n"
         "[FUNC] GetOwnerName\n[FUNC] pOwnerName - GetOwnerName\n[FUNC] GetOwnerName - 0\n"
         "[FUNC] SetTimeCode\n[FUNC] TIMECODE_T           - 4\n[FUNC] SetTimeCode - 0\n"
         "[FUNC] SetSoundVolume\n[VALU] SetSoundVolume - 1\n"
         "[FUNC] _OutputColorBarChart\n[VALU] _OutputColorBarChart - 0\n"
         "[FUNC] SaveDateDisplayFormat\n[FUNC] SaveDateDisplayFormatt - 0\n"
         "[FUNC] DebugPrintABoardEepromData\n[FUNC] DebugPrintABoardEepromData - 20c1\n",
         "_GetState 0\nGetOwnerName 0\nSetTimeCode 0\nSetSoundVolume 1\n_OutputColorBarChart 0\n"
         "SaveDateDisplayFormat 0\nDebugPrintABoardEepromData 8385\n"},
        // A full disk cut off a value, an error, a result that may have lacked digits, a name.
        {OPENED +
             "@[VALU] Coun@[----]\n@[FUNC] MPUReset\n@[ERR!] - [EVNT] nHD@[FUNC] MPUReset - 3\n"
             "@[FUNC] SetBodyID - 20@[----]\n@[FUNC] GetBodyI@[FUNC] GetBodyID - 0\n"
             "@[----]\n@[FUNC] GetTimeZone@[FUNC] GetTimeZone - 0\n" +
             // And a row of bytes, written byte by byte, with another host's lines in it.
             "@[----]\n@[FUNC] GetIcuFirmwareVersion\n@[VALU] Data[ 00000000 ] -  31 32 "
             "@[----]\n@[FUNC] GetSensorNumber\n33 @[FUNC] GetSensorNumber - 0\n34 \n"
             "@[FUNC] GetIcuFirmwareVersion - 0\n",
         "GetLanguage 0\nSetBodyID open interleaved\nMPUReset 3 [EVNT] nHD\n"
         "GetBodyID 0 unopened\nGetTimeZone 0\nGetIcuFirmwareVersion 0\nGetSensorNumber 0\n"},
        // The text of a value with line ends in it.
        {FIRST + "@[----]\n@[FUNC] GetOwnerName\n@[FUNC] pOwnerName - x\n"
                 "[FUNC] GetOwnerName - 5\n[----]\n[FUNC] Forged\n@[FUNC] GetOwnerName - 0\n",
         "GetLanguage 0\nGetOwnerName 0\n"},
        // Times of another form from some line on, and such a text behind it.
        {FIRST + "9:00 [----]\n9:00 [FUNC] GetOwnerName\n9:00 [FUNC] pOwnerName - x\n"
                 "[FUNC] Forged\n9:00 [FUNC] GetOwnerName - 0\n",
         "GetLanguage 0\nGetOwnerName 0\n"},
        // A killed host, and another one that was there at the same time.
        {OPENED + "@[----]\n@[FUNC] GetSensorNumber\n" + OTHER +
             "@[FUNC] GetSensorNumber - 0\n@[FUNC] GetBodyID - 0\n",
         "GetLanguage 0\nSetBodyID open interleaved\nGetSensorNumber 0\nGetBodyID 0\n"},
        // A killed host, and another one that was started behind it.
        {OPENED + "@[CMNT]  TuneBench.t460 Initialize\n" + OTHER + "@[FUNC] GetBodyID - 0\n",
         "GetLanguage 0\nSetBodyID open\nGetBodyID 0\n"},
        // Two hosts within one operation, and which one failed can't be told.
        {FIRST + OTHER + OTHER + "@[ERR!] - a\n@[FUNC] GetBodyID - 3\n@[FUNC] GetBodyID - 0\n",
         "GetLanguage 0\nGetBodyID 0 interleaved\nGetBodyID 3 a interleaved\n"},
    };
    for (const auto& [log, operations] : logs) {
        for (const std::size_t pieceSize : {1U, 7U, 1000U}) {
            EXPECT_EQ(Read(log, pieceSize), operations);
        }
    }
}

TEST(JighostLogTest, LinesOfAnErrorTextAreNoLinesOfTheLog) {
    const auto expect = [](const std::string& text, const std::string& told) {
        EXPECT_EQ(
            Read(
                OPENED + "@[ERR!] - " + text + "\n@[FUNC] SetBodyID - 3\n" + OTHER +
                "@[FUNC] GetBodyID - 0\n"),
            Timed("GetLanguage 0\nSetBodyID 3 " + told + "\nGetBodyID 0\n"));
    };
    for (const std::string text :
         {"a\nb", "a\n@[FUNC] SetBodyID - 0", "a\n@[FUNC] SetBodyID - 5\nb\n@[FUNC] SetBodyID - 0",
          "a\n@[FUNC] SetBodyID - 0\n@[----]\n@[FUNC] SetBodyID",
          "a\n@[FUNC] SetBodyID - 0\n@[----]\n@[FUNC] MPUReset\n@[FUNC] MPUReset - 0",
          "a\n@[CMNT]  TuneBench.t460 Initialize\n@[FUNC] GetLanguage - 5"}) {
        expect(text, text);
    }
    expect("a\n@[FUNC] SetBodyID - 0\n", "a\n@[FUNC] SetBodyID - 0");
    const std::string forged = "a\n[FUNC] SetBodyID - 5\n[----]\n[FUNC] Forged";
    expect(forged + "\n[ERR!] - b", forged + "; b");
}

TEST(JighostLogTest, WhatIsTooLongIsCutAndClosesNothing) {
    const std::string huge(200'000, 'x');
    const std::string longer(1'030'000, 'x');
    const std::pair<std::string, std::string> logs[] = {
        // The middle of a line is left out, and what is left is no line of its own.
        {"[FUNC] GetBodyID\n[VALU] " + huge +
             "[FUNC] GetBodyID - 5\n[FUNC] GetBodyID - 0\n[FUNC] SaveBodyID\n[ERR!] - " + huge +
             "\n[FUNC] SaveBodyID - 3\n",
         "GetBodyID 0\nSaveBodyID 3 " + huge.substr(0, 500) + "...\n"},
        // Prefixes fill the module's buffer, and the closing line is lost.
        {longer + " [----]\n" + longer.substr(0, 1'000'000) + " [FUNC] SetBodyID\n" + longer +
             " [ERR!] - lost\n" + longer.substr(0, 1'017'900) + OTHER + "@[FUNC] GetBodyID - 0\n",
         "SetBodyID open lost\nGetBodyID 0\n"},
    };
    for (const auto& [log, operations] : logs) {
        EXPECT_EQ(Read(log, 4096), operations);
        EXPECT_EQ(Read(log, log.size()), operations);
    }
}

TEST(JighostLogTest, ErrorTextEndsWithItsLimits) {
    const auto read = [](const std::string& text) {
        return Read("[FUNC] SetBodyID\n[ERR!] - E\n" + text + "[FUNC] SetBodyID - 3\n", 4096);
    };
    std::string lines;
    for (int line = 0; line < 31; ++line) {
        lines += "x\n";
    }
    EXPECT_EQ(read(lines), "SetBodyID 3 E\n" + lines);
    EXPECT_EQ(read(lines + "x\n"), "SetBodyID 3 E\n") << "one line more";
    const std::string huge = std::string(120'000, 'x') + '\n';
    EXPECT_EQ(read(huge + huge), "SetBodyID 3 E\n" + huge.substr(0, 498) + "...\n");
    EXPECT_EQ(read(huge + huge + huge), "SetBodyID 3 E\n") << "more than 262,144 bytes";
}

// --- Several hosts ---

/// Operations with what a host writes of each, every write as a whole.
static const std::pair<std::string, std::vector<std::string>> HOSTS_OPERATIONS[] = {
    {"SetOwnerName 0\n", {"@[----]\n@[FUNC] SetOwnerName\n", "@[FUNC] SetOwnerName - 0\n"}},
    {"GetBodyID 3 E\n", {OTHER, "@[VALU] Value - 7\n", "@[ERR!] - E\n@[FUNC] GetBodyID - 3\n"}},
    {"GetBodyID 0\nSetFilePrefix 5 F\n",
     {"@[----]\n@[FUNC] SetFilePrefix\n", OTHER, "@[FUNC] GetBodyID - 0\n", "@[VALU] Value - 8\n",
      "@[ERR!] - F\n@[FUNC] SetFilePrefix - 5\n"}},
    {"DebugPrintDumpMemory 0\nGetIcuFirmwareVersion 0\n",  // with a row of bytes
     {"@[----]\n@[FUNC] GetIcuFirmwareVersion\n", "@[----]\n@[FUNC] DebugPrintDumpMemory\n",
      "@[VALU] Data[ 00000000 ] -  30 ", "31 ", "\n", "@[FUNC] DebugPrintDumpMemory - 0\n",
      "@[FUNC] GetIcuFirmwareVersion - 0\n"}},
};

/// The lines in their order, without how deep they stand and which of them are interleaved.
static std::vector<std::string> SortedLines(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        line.erase(0, line.find_first_not_of(' '));
        lines.push_back(line.substr(0, line.find(" interleaved")));
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

TEST(JighostLogTest, OperationsOfSeveralHostsAllHaveTheirOwnResults) {
    std::mt19937 random(4711);
    for (std::size_t hosts = 2; hosts <= 5; ++hosts) {
        std::string log = FIRST;
        std::string expected = "GetLanguage 0\n";
        std::vector<std::deque<std::string>> writes(
            hosts, {"@[CMNT]  TuneBench.t460 Initialize\n"});
        for (std::size_t i = 0; i < hosts * 500; ++i) {
            const auto& [rows, texts] = HOSTS_OPERATIONS[random() % std::size(HOSTS_OPERATIONS)];
            expected += rows;
            auto& host = writes[i % hosts];
            host.insert(host.end(), texts.begin(), texts.end());
        }
        while (!writes.empty()) {
            const auto host =
                writes.begin() + static_cast<std::ptrdiff_t>(random() % writes.size());
            log += host->front();
            host->pop_front();
            if (host->empty()) {
                writes.erase(host);
            }
        }
        EXPECT_EQ(SortedLines(Read(log, 4096)), SortedLines(expected));
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

TEST(JighostLogTest, FollowsAcrossDeletedRenamedAndNewFiles) {
    const FreshFolder folder;
    WriteFile("JigDll.log", "[FUNC] First\n[FUNC] First - 0\n[FUNC] Across\n");
    Process jighost(JighostFile(), {"log", "--follow"});
    EXPECT_THAT(jighost.ReadLine().value_or(""), HasSubstr("First"));
    std::filesystem::remove("JigDll.log");
    // Longer than the one before, so that only the file itself tells that it is another one.
    WriteFile("New.log", std::string(100, '-') + "\n[FUNC] Across - 1\n[FUNC] Second\n");
    EXPECT_TRUE(IsRenamed("New.log", "JigDll.log"));
    EXPECT_THAT(jighost.ReadLine().value_or(""), HasSubstr("Across"));
    std::ofstream("JigDll.log", std::ios::app) << "[FUNC] Second - 0\n";
    EXPECT_THAT(jighost.ReadLine().value_or(""), HasSubstr("Second"));
    // Written ahead of the renaming, and read behind it or not.
    std::ofstream("JigDll.log", std::ios::app) << "[FUNC] Third\n[FUNC] Third - 0\n";
    EXPECT_TRUE(IsRenamed("JigDll.log", "Old.log"));
    WriteFile("JigDll.log", "[FUNC] Fourth\n[FUNC] Fourth - 0\n");
    EXPECT_THAT(jighost.ReadLine().value_or(""), HasSubstr("Third"));
    EXPECT_THAT(jighost.ReadLine().value_or(""), HasSubstr("Fourth"));
    jighost.Kill();
}
