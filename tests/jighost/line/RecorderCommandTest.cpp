// jighost recorder: what it does to a host's folder, and what is left of that.
#include <functional>
#include <map>
#include <nlohmann/json.hpp>

#include "platform/Program.h"
#include "recorder/Files.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"
#include "tests/support/SupportLink.h"

using testing::HasSubstr;

namespace fs = std::filesystem;

namespace {

class RecorderCommandTest : public testing::Test {
  protected:
    RecorderCommandTest() {
        fs::create_directory("line");
        fs::copy_file(BuildFolder() / MODULE_FILE_NAME, module);
        fs::copy_file(LinkFile("second_link"), link);
        WriteFile("line/notes.txt", "of the host");
        m_Before = Content();
    }

    /// The files of the host's folder.
    static std::map<std::string, std::string> Content() {
        std::map<std::string, std::string> content;
        for (const auto& entry : fs::directory_iterator("line")) {
            if (entry.is_regular_file()) {
                content[entry.path().filename().string()] = ReadFile(entry.path());
            }
        }
        return content;
    }
    bool IsAsBefore() const { return Content() == m_Before; }

    static void ExpectInstalled() {
        const JIGHOST_RUN run = RunJighost({"recorder", "install", "line", "--keep", "20M"});
        EXPECT_EQ(run.exitCode, 0) << run.errors;
    }
    void ExpectRefused(int exitCode, const std::string& error) {
        const JIGHOST_RUN run = RunJighost({"recorder", "install", "line"});
        EXPECT_EQ(run.exitCode, exitCode);
        EXPECT_THAT(run.errors, HasSubstr(error));
        EXPECT_TRUE(IsAsBefore()) << error;
    }
    void ExpectRemoved() {
        const JIGHOST_RUN run = RunJighost({"recorder", "remove", "line"});
        EXPECT_EQ(run.exitCode, 0) << run.errors;
        EXPECT_TRUE(IsAsBefore());
    }

    const fs::path module = fs::path("line") / MODULE_FILE_NAME;
    const fs::path link = fs::path("line") / LINK_FILE_NAME;
    const fs::path recordedModule = fs::path("line") / Recorder::RecordedName(MODULE_FILE_NAME);
    const fs::path recordedLink = fs::path("line") / Recorder::RecordedName(LINK_FILE_NAME);
    std::map<std::string, std::string> m_Before;

  private:
    FreshFolder m_Folder;
};

TEST_F(RecorderCommandTest, RecordsUntilItIsRemoved) {
    ExpectInstalled();
    EXPECT_THAT(ReadFile("line/recorder.ini"), HasSubstr("\nkeep = 20000000\n"));
    // A host has no other camera link: here it is told so.
    const std::string linkFile = fs::absolute(link).string();
    EXPECT_EQ(
        RunJighost({"run", "GetDateTime", "--module", module.string(), "--link", linkFile})
            .exitCode,
        0);
    const JIGHOST_RUN status = RunJighost({"recorder", "status", "line"});
    EXPECT_EQ(status.exitCode, 0) << status.output;
    EXPECT_THAT(status.output, HasSubstr("\nrecordings  1 file, "));
    const fs::path recording = fs::directory_iterator("line/recordings")->path();
    const std::string text = ReadFile(recording);
    EXPECT_THAT(text, HasSubstr("\"name\":\"GetDateTime\",\"record\":\"00 00 00 00 "));
    EXPECT_EQ(
        RunJighost({"replay", recording.string()}).output, "1 operation, 2 calls as recorded\n");

    WriteFile(recording, text + "{\"entry\":\"gap\",\"entries\":7,\"at\":0,\"why\":\"x\"}\n");
    const JIGHOST_RUN failed = RunJighost({"recorder", "status", "line"});
    EXPECT_EQ(failed.exitCode, 5);
    EXPECT_THAT(failed.output, HasSubstr("7 entries missing in 1 place"));
    const JIGHOST_RUN json = RunJighost({"recorder", "status", "line", "--json"});
    EXPECT_EQ(json.exitCode, 5);
    const auto told = nlohmann::json::parse(json.output);
    const nlohmann::json expected = {{"link", "whole"},    {"module", "whole"}, {"files", 1},
                                     {"keep", 20'000'000}, {"gaps", 1},         {"lost", 7}};
    for (const auto& [key, value] : expected.items()) {
        EXPECT_EQ(told.at(key), value) << key;
    }
    ExpectRemoved();
    EXPECT_TRUE(fs::exists(recording));
    EXPECT_EQ(RunJighost({"recorder", "status", "line"}).exitCode, 5);
}

TEST_F(RecorderCommandTest, StatusOfHostileRecordingsIsBounded) {
    ExpectInstalled();
    const std::string recording = "line/recordings/20201122_210659_line3_4711.jsonl";
    const auto expect = [&](const std::string& text, int exitCode, const std::string& told) {
        WriteFile(recording, text);
        const JIGHOST_RUN run = RunJighost({"recorder", "status", "line"});
        EXPECT_EQ(run.exitCode, exitCode);
        EXPECT_THAT(run.output + run.errors, HasSubstr(told));
    };
    std::string most;
    most.resize(16'000'000, 'x');
    expect("{\"started\":7}\r\n" + most + "\n" + most, 0, "\nrecordings  1 file, 32.0 MB\n");
    expect("{}\n{\"entry\":\"gap\",\"entries\":\"x\"}\n", 5, "0 entries missing in 1 place");
    for (const char* pszAhead : {"", "{}\n"}) {
        expect(
            pszAhead + most + "x", 1,
            "20201122_210659_line3_4711.jsonl: expected at most 16000000 bytes in a line\n");
    }
}

TEST_F(RecorderCommandTest, HalfInstallationsArePutBack) {
    const std::vector<std::function<void()>> ends = {
        // As it was killed on the way in ...
        [&] { fs::create_hard_link(link, recordedLink); },
        [&] { fs::copy_file(module, recordedModule); },
        // ... and on the way out.
        [&] {
            ExpectInstalled();
            fs::rename(recordedModule, module);
        },
        [&] {
            ExpectInstalled();
            fs::remove(module);
        },
        [&] {
            ExpectInstalled();
            WriteFile(link.string() + ".unfinished-999999999", "x");
        },
    };
    for (std::size_t i = 0; i < ends.size(); ++i) {
        ends[i]();
        const int nStatus = i + 1 == ends.size() ? 0 : 5;
        EXPECT_EQ(RunJighost({"recorder", "status", "line"}).exitCode, nStatus) << i;
        EXPECT_EQ(RunJighost({"recorder", "install", "line"}).exitCode, 2);
        ExpectRemoved();
    }
}

TEST_F(RecorderCommandTest, NothingIsInstalledWhereItDoesNotFit) {
    const std::string lacking = WriteLackingLink(link);
    m_Before = Content();
    ExpectRefused(3, lacking);
    fs::remove(link);
    m_Before = Content();
    ExpectRefused(2, LINK_FILE_NAME);
    fs::copy_file(LinkFile("second_link"), link);
    if (!IS_WINDOWS) {
        fs::rename(module, "module");
        fs::create_symlink(fs::absolute("module"), module);
        m_Before = Content();
        ExpectRefused(2, "a link to one");
        fs::remove(module);
        fs::rename("module", module);
    }
    WriteFile("line/recorder.ini", "of somebody else");
    m_Before = Content();
    ExpectRefused(2, "recorder.ini already");
    fs::remove("line/recorder.ini");
    for (const char* pszSize : {"15M", "G", "", "1 G", "-1"}) {
        EXPECT_EQ(RunJighost({"recorder", "install", "line", "--keep", pszSize}).exitCode, 2)
            << pszSize;
    }
}

TEST_F(RecorderCommandTest, NothingIsInstalledForWhoTakesMoreOfTheLinkThanTheRecorderHas) {
    // A host that looks into the simulated body: its names are no part of a camera link.
    fs::remove(link);
    fs::copy_file(BuildFolder() / LINK_FILE_NAME, link);
    fs::copy_file(ProgramFile(), "line/host");
    WriteFile("line/half", ReadFile("line/host").substr(0, 300'000));
    WriteFile("line/JigDll.log", std::string(5, '\n'));
    m_Before = Content();
    ExpectRefused(3, (fs::canonical("line") / "host").string() + " takes names from ");
    ExpectRefused(3, "Observe");
    // The same host does without them where the link never had them.
    fs::remove(link);
    fs::copy_file(LinkFile("second_link"), link);
    ExpectInstalled();
}

TEST_F(RecorderCommandTest, LibraryThatHasComeSinceStays) {
    ExpectInstalled();
    fs::remove(link);
    fs::copy_file(LinkFile("larger_link"), link);
    const JIGHOST_RUN run = RunJighost({"recorder", "remove", "line"});
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_THAT(run.output, HasSubstr("has come since and stays"));
    EXPECT_EQ(ReadFile(link), ReadFile(LinkFile("larger_link")));
    EXPECT_EQ(ReadFile(recordedLink), ReadFile(LinkFile("second_link")));
    EXPECT_EQ(ReadFile(module), ReadFile(BuildFolder() / MODULE_FILE_NAME));
}

}  // namespace
