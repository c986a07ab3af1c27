// The recorder between a host, the module and the second camera link.
#include <cctype>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <thread>
#include <tuple>
#include <utility>

#include "jighost/replay/ChosenOperations.h"
#include "jighost/session/Module.h"
#include "link/BodyLink.h"
#include "platform/Process.h"
#include "recorder/RecordingName.h"
#include "recorder/Settings.h"
#include "tests/secondlink/LinkInUse.h"
#include "tests/support/Driver.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::Contains;
using testing::ContainsRegex;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace fs = std::filesystem;

namespace {

/// What a host gets of the link, by a program that loads it ahead of the module.
std::string RunDirect(std::vector<std::string> arguments) {
    Process host((BuildFolder() / SECOND_LINK_DIRECT_FILE).string(), arguments);
    EXPECT_EQ(host.Wait(), 0);
    return ReadFile(arguments[2]);
}

std::size_t Occurrences(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t i = text.find(part); i != std::string::npos; i = text.find(part, i + 1)) {
        ++count;
    }
    return count;
}

/// The only recording in the folder.
std::string TheRecording(const fs::path& folder) {
    const auto files = Recorder::RecordingsIn(folder);
    EXPECT_THAT(files, SizeIs(1));
    return files.empty() ? "" : files.front().path.string();
}

TEST(RecorderTest, HostAndCameraSeeNoDifference) {
    const FreshFolder folder;
    const Surroundings surroundings;
    const RecordedFolder host;
    const std::uint64_t keep = 20'000'000;
    WriteFile("line/recorder.ini", Recorder::SettingsText({host.recordings, keep, {}}));
    const std::string expected = RunDirect(
        {LinkFile("second_link").string(), (BuildFolder() / MODULE_FILE).string(), "direct.txt"});
    const std::string made =
        RunDirect({host.link.string(), host.module.string(), "made.txt", host.linkBehind.string()});
    EXPECT_EQ(FirstDifference(expected, made), "");

    // And all of it passed the recorder: the last operation bears the number of all.
    const std::size_t runs = Occurrences(expected, ", step ") + Occurrences(expected, ", nothing ");
    const auto files = Recorder::RecordingsIn(host.recordings);
    ASSERT_FALSE(files.empty());
    const std::string last = ReadFile(files.back().path);
    const std::size_t place = last.rfind("\"operation\":");
    EXPECT_EQ(last.rfind("\"operation\":" + std::to_string(runs) + ','), place);
    std::uint64_t sum = 0;
    for (const auto& file : files) {
        sum += file.size;
    }
    EXPECT_LE(sum, keep);
}

/// The lines by which operations begin.
std::vector<std::string> Begins(const std::string& path) {
    std::vector<std::string> begins;
    std::istringstream lines(ReadFile(path));
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("{\"entry\":\"operation\"")) {
            begins.push_back(line);
        }
    }
    return begins;
}

std::string ThreadOf(const std::string& line) {
    const std::size_t place = line.find("\"thread\":");
    return line.substr(place, line.find(',', place) - place);
}

/// The lines of the module's log behind a place; none of what is no file.
std::vector<std::string> LogLinesFrom(std::size_t place) {
    std::vector<std::string> texts;
    std::ifstream lines("JigDll.log", std::ios::binary);
    lines.seekg(static_cast<std::streamoff>(place));
    for (std::string line; std::getline(lines, line);) {
        texts.push_back(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line);
    }
    return texts;
}

std::vector<std::string> LogLinesOf(const TRACED_OPERATION& operation) {
    std::vector<std::string> texts;
    for (const TRACED_LOG_LINE& line : operation.log) {
        texts.push_back(line.text);
    }
    return texts;
}

void AppendToLog(const std::string& text) {
    std::ofstream("JigDll.log", std::ios::app | std::ios::binary) << text;
}

/// What an operation runs within another one.
EVENT_PROC s_Nested = nullptr;

TEST(RecorderTest, OperationsOfThreadsAndWithinOthersAreToldApart) {
    const FreshFolder folder;
    const RecordedFolder host;
    WriteFile(
        "line/recorder.ini", Recorder::SettingsText({host.recordings, 0, {{"GetDateTime", 24}}}));
    {
        const LinkInUse inUse(host.link, host.linkBehind);
        const Module module(host.module.string());
        const auto run = [&](const char* pszName, std::vector<std::uint8_t> record = {}) {
            return module.Find(pszName).procedure(record.empty() ? nullptr : record.data());
        };
        run("GetDateTime", std::vector<std::uint8_t>(24, 7));
        std::thread([&] { EXPECT_EQ(run("GetBodyID"), 3); }).join();
        s_Nested = module.Find("EnterFactoryMode").procedure;
        inUse.link.meanwhile = [] { EXPECT_EQ(s_Nested(nullptr), 0); };
        run("GetBodyID", std::vector<std::uint8_t>(20));
        run("SetOwnerName", std::vector<std::uint8_t>(32));
    }
    const std::string path = TheRecording(host.recordings);
    const std::vector<std::string> begins = Begins(path);
    ASSERT_THAT(begins, SizeIs(5));
    EXPECT_THAT(begins[0], HasSubstr(R"("operation":1,"name":"GetDateTime","record":"07 07 )"));
    EXPECT_THAT(begins[1], HasSubstr(R"("operation":2,"name":"GetBodyID","record":null,)"));
    EXPECT_THAT(begins[2], HasSubstr(R"("operation":3,"name":"GetBodyID","record":"00 00 )"));
    EXPECT_THAT(begins[3], HasSubstr(R"("operation":4,"name":"EnterFactoryMode","record":null,)"));
    EXPECT_THAT(begins[4], HasSubstr(R"("operation":5,"name":"SetOwnerName","record":"",)"));
    const std::string thread = ThreadOf(begins[0]);
    EXPECT_NE(ThreadOf(begins[1]), thread);
    for (const std::size_t index : {2U, 3U, 4U}) {
        EXPECT_EQ(ThreadOf(begins[index]), thread);
    }

    const std::vector<TRACED_OPERATION> operations = ReadOperations(path, {}).operations;
    ASSERT_THAT(operations, SizeIs(5));
    EXPECT_EQ(operations[1].result, 3);
    EXPECT_TRUE(operations[1].bNullRecord);
    EXPECT_THAT(operations[2].calls, SizeIs(1));
    EXPECT_EQ(operations[2].calls[0].function, "CProperty::Get");
    EXPECT_THAT(operations[2].returned, SizeIs(20));
    EXPECT_EQ(operations[3].calls.at(0).function, "CProperty::Set");
    // Of the log the outer one has all lines, the inner one none.
    EXPECT_THAT(LogLinesOf(operations[2]), Contains(HasSubstr("EnterFactoryMode - 0")));
    EXPECT_THAT(LogLinesOf(operations[2]).back(), HasSubstr("GetBodyID - 0"));
    EXPECT_THAT(operations[3].log, IsEmpty());
    EXPECT_EQ(operations[3].result, 0);
}

/// What becomes of the log ahead of an operation, and by how many lines that makes it grow then.
struct LOG_EVENT {
    const char* name;
    std::size_t lines;
    void (*happen)();
    void (*meanwhile)() = nullptr;
};

const LOG_EVENT LOG_EVENTS[] = {
    {"begun", 4, [] {}},
    {"gone on", 4, [] {}},
    {"written by another host", 4, [] { AppendToLog("7 [FUNC] GetBodyID\n7 [FUNC] "); }},
    {"written at length", 4, [] { AppendToLog(std::string(1'000'000, '.') + '\n'); }},
    {"renamed", 4, [] { fs::rename("JigDll.log", "former.log"); }},
    {"deleted", 4, [] { fs::remove("JigDll.log"); }},
    {"emptied", 4, [] { fs::resize_file("JigDll.log", 0); }},
    {"a folder", 0, [] { fs::remove("JigDll.log"), fs::create_directory("JigDll.log"); }},
    {"back", 4, [] { fs::remove("JigDll.log"); }},
    {"elsewhere", 4,
     [] {
         fs::create_directory("other");
         fs::current_path("other");
         AppendToLog(std::string(100'000, '.') + '\n');
     }},
    {"here again", 4, [] { fs::current_path(".."); }},
    {"written meanwhile", 5, [] {}, [] { AppendToLog("7 another's\n"); }},
};

TEST(RecorderTest, LogLinesStandWithTheOperationWhateverBecomesOfTheLog) {
    const FreshFolder folder;
    const RecordedFolder host;
    std::vector<std::vector<std::string>> grown;
    {
        const LinkInUse inUse(host.link, host.linkBehind);
        const Module module(host.module.string());
        for (const LOG_EVENT& event : LOG_EVENTS) {
            event.happen();
            inUse.link.meanwhile = event.meanwhile;
            inUse.link.failAt =
                inUse.link.steps + 6;  // a failed operation's log is read, however short it was
            const bool bLog = fs::is_regular_file("JigDll.log");
            const std::size_t place = bLog ? ReadFile("JigDll.log").size() : 0;
            EXPECT_EQ(module.Find("EnterFactoryMode").procedure(nullptr), 0x2001) << event.name;
            grown.push_back(LogLinesFrom(place));
        }
    }
    const auto operations = ReadOperations(TheRecording(host.recordings), {}).operations;
    ASSERT_THAT(operations, SizeIs(std::size(LOG_EVENTS)));
    for (std::size_t i = 0; i < operations.size(); ++i) {
        EXPECT_EQ(LogLinesOf(operations[i]), grown[i]) << LOG_EVENTS[i].name;
        EXPECT_THAT(operations[i].log, SizeIs(LOG_EVENTS[i].lines)) << LOG_EVENTS[i].name;
    }
}

/// What the link throws of each kind, as a recording has it.
const std::pair<THROWN, Link::FAILURE> THROWN_KINDS[] = {
    {THROWN::CAMERA_EXCEPTION, {.code = 0x2001, .message = "[EVNT] Second link"}},
    {THROWN::STANDARD_EXCEPTION,
     {.kind = Link::FAULT::STANDARD_EXCEPTION, .code = 0, .message = "second link"}},
    {THROWN::INTEGER, {.kind = Link::FAULT::INTEGER, .code = 7, .message = ""}},
};

/// What each step in the notes would be if it threw; for a call there is no function.
std::vector<Link::THROW> StepsIn(const std::string& notes) {
    std::uint32_t constructions = 0;
    std::uint32_t linePrefixes = 0;
    std::vector<Link::THROW> steps;
    std::istringstream lines(notes);
    for (std::string line; std::getline(lines, line);) {
        if (line == "CPublicProperty") {  // it has begun with its base class
            steps.back().function = "CPublicProperty::CPublicProperty";
            steps.push_back(steps.back());
        } else if (line.starts_with('C') && std::isupper(line[1]) != 0) {
            steps.push_back({line + "::" + line, ++constructions, {}});
        } else if (line.starts_with("_gt")) {
            steps.push_back({"_gt", ++linePrefixes, {}});
        } else if (!line.starts_with('~') && !line.starts_with(" ->")) {
            steps.emplace_back();
        }
    }
    return steps;
}

void RunOnce(const Module& module, const char* pszName) {
    RecordBytes record = ValidRecord(*FindOperation(pszName));
    module.Find(pszName).procedure(record.data());
}

/// Runs an operation as it is, and with each step of the link failing; gives what is to be recorded
/// of each run.
std::vector<std::vector<Link::THROW>> RunWithEachThrow(
    SECOND_LINK& link, const Module& module, const char* pszName) {
    link = {};
    RunOnce(module, pszName);
    std::vector<std::vector<Link::THROW>> expected = {{}};
    for (Link::THROW& step : StepsIn(std::exchange(link.notes, ""))) {
        link.steps = 0;
        std::tie(link.thrown, step.failure) = THROWN_KINDS[++link.failAt % std::size(THROWN_KINDS)];
        RunOnce(module, pszName);
        expected.push_back(step.function.empty() ? std::vector<Link::THROW>() : std::vector{step});
    }
    return expected;
}

/// With link objects of all classes.
const char* const THROWING_OPERATIONS[] = {
    "GetBodyID", "CheckLensActivity", "CopyDLResonantFrequency"};

TEST(RecorderTest, WhatConstructorsAndLinePrefixesThrowIsRecordedAndReplayed) {
    const FreshFolder folder;
    const Surroundings surroundings;
    const RecordedFolder host;
    std::map<std::string, std::uint32_t, std::less<>> sizes;
    for (const char* pszName : THROWING_OPERATIONS) {
        sizes[pszName] = FindOperation(pszName)->record->size;
    }
    WriteFile("line/recorder.ini", Recorder::SettingsText({host.recordings, 0, sizes}));
    std::vector<std::vector<Link::THROW>> expected;
    {
        const LinkInUse inUse(host.link, host.linkBehind);
        _gt(10);
        inUse.link.failAt = 2;
        inUse.link.thrown = THROWN::INTEGER;
        EXPECT_THROW(_gt(10), int);
        const Module module(host.module.string());
        for (const char* pszName : THROWING_OPERATIONS) {
            const auto thrown = RunWithEachThrow(inUse.link, module, pszName);
            expected.insert(expected.end(), thrown.begin(), thrown.end());
        }
    }
    const std::string path = TheRecording(host.recordings);
    EXPECT_THAT(
        ReadFile(path),
        HasSubstr(R"({"entry":"thrown","operation":0,"function":"_gt","number":2,)"));

    const auto operations = ReadOperations(path, {}).operations;
    ASSERT_THAT(operations, SizeIs(expected.size()));
    std::set<std::string> functions;
    for (std::size_t i = 0; i < operations.size(); ++i) {
        std::vector<Link::THROW> made;
        for (const TRACED_THROW& traced : operations[i].throws) {
            made.push_back(traced.thrown);
            functions.insert(traced.thrown.function);
        }
        EXPECT_EQ(made, expected[i]) << i;
    }
    EXPECT_THAT(functions, SizeIs(5));  // the four classes and `_gt`

    const JIGHOST_RUN replay = RunJighost({"replay", path});
    EXPECT_EQ(replay.exitCode, 0) << replay.output << replay.errors;
    EXPECT_THAT(replay.output, StartsWith(std::to_string(operations.size()) + " operations, "));
    std::string changed = ReadFile(path);
    const std::string number = R"("function":"CPublicProperty::CPublicProperty","number":1)";
    const std::size_t place = changed.find(number);
    ASSERT_NE(place, std::string::npos);
    changed.replace(place + number.size() - 1, 1, "2");
    WriteFile("changed.jsonl", changed);
    const JIGHOST_RUN differing = RunJighost({"replay", "changed.jsonl"});
    EXPECT_EQ(differing.exitCode, 5);
    EXPECT_THAT(
        differing.output,
        ContainsRegex("differs in what was thrown\n  expected: construction 2, CPublicProperty -> "
                      "failed: .*\n  made:     nothing\n"));
}

TEST(RecorderTest, GapIsMarkedWhenTheRecordingGoesOn) {
    const FreshFolder folder;
    const RecordedFolder host;
    const LinkInUse inUse(host.link, host.linkBehind);
    const Module module(host.module.string());
    const auto enter = module.Find("EnterFactoryMode").procedure;
    EXPECT_EQ(enter(nullptr), 0);
    fs::rename(host.recordings, "moved");
    for (int i = 0; i < 1'000'000 && !fs::exists("line/recorder.failed"); ++i) {
        EXPECT_EQ(enter(nullptr), 0);  // it is looked for now and then
    }
    EXPECT_THAT(ReadFile("line/recorder.failed"), HasSubstr("No such file or directory"));
    fs::create_directory(host.recordings);
    EXPECT_EQ(enter(nullptr), 0);

    // Of the last one ahead of it: its begin, two calls with their answers, its result.
    const std::string text = ReadFile(TheRecording(host.recordings));
    EXPECT_THAT(text, HasSubstr("\n{\"entry\":\"gap\",\"entries\":6,\"at\":"));
    EXPECT_EQ(Occurrences(text, "\"entry\":\"operation\""), 1U);
    EXPECT_THAT(ReadFile(TheRecording("moved")), HasSubstr("\"entry\":\"result\",\"operation\":1"));
}

}  // namespace
