// jighost recorder: what it does to a host's folder, and what is left of that.
#include <functional>
#include <map>

#include "platform/Program.h"
#include "recorder/Files.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"
#include "tests/support/SupportJson.h"
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

    static void Install() { RunTo(0, "recorder install line --keep 20M"); }
    void ExpectRefused(int exitCode, const std::string& error) {
        m_Before = Content();
        RunTo(exitCode, "recorder install line", error);
        EXPECT_TRUE(IsAsBefore()) << error;
    }
    void ExpectRemoved() const {
        RunTo(0, "recorder remove line");
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
    Install();
    EXPECT_THAT(ReadFile("line/recorder.ini"), HasSubstr("\nkeep = 20000000\n"));
    // A host has no other camera link: here it is told so.
    const std::string linkFile = fs::absolute(link).string();
    EXPECT_EQ(
        RunJighost({"run", "GetDateTime", "--module", module.string(), "--link", linkFile})
            .exitCode,
        0);
    EXPECT_THAT(RunTo(0, "recorder status line").output, HasSubstr("\nrecordings  1 file, "));
    const fs::path recording = fs::directory_iterator("line/recordings")->path();
    const std::string text = ReadFile(recording);
    EXPECT_THAT(text, HasSubstr("\"name\":\"GetDateTime\",\"record\":\"00 00 00 00 "));
    EXPECT_EQ(
        RunTo(0, "replay " + recording.string()).output, "1 operation, 2 calls as recorded\n");

    WriteFile(recording, text + "{\"entry\":\"gap\",\"entries\":7,\"at\":0,\"why\":\"x\"}\n");
    const JIGHOST_RUN gap = RunTo(5, "recorder status line");
    EXPECT_THAT(gap.output, HasSubstr("7 entries missing in 1 place"));
    EXPECT_THAT(Json::parse(RunTo(5, "recorder status line --json").output), Holds(Json::parse(R"({
            "link": "whole", "module": "whole", "files": 1, "keep": 20000000, "gaps": 1,
            "lost": 7})")));
    ExpectRemoved();
    EXPECT_TRUE(fs::exists(recording));
    RunTo(5, "recorder status line");
}

TEST_F(RecorderCommandTest, StatusOfHostileRecordingsIsBounded) {
    Install();
    std::string most;
    most.resize(16'000'000, 'x');
    const std::string tooLong = "4711.jsonl: expected at most 16000000 bytes in a line\n";
    const std::tuple<std::string, int, std::string> recordings[] = {
        {"{\"started\":7}\r\n" + most + "\n" + most, 0, "\nrecordings  1 file, 32.0 MB\n"},
        {"{}\n{\"entry\":\"gap\",\"entries\":\"x\"}\n", 5, "0 entries missing in 1 place"},
        {most + "x", 1, tooLong},
        {"{}\n" + most + "x", 1, tooLong},
    };
    for (const auto& [text, exitCode, told] : recordings) {
        WriteFile("line/recordings/20201122_210659_line3_4711.jsonl", text);
        const JIGHOST_RUN run = RunTo(exitCode, "recorder status line");
        EXPECT_THAT(run.output + run.errors, HasSubstr(told));
    }
}

TEST_F(RecorderCommandTest, HalfInstallationsArePutBack) {
    const std::pair<std::function<void()>, int> ends[] = {
        // As it was killed on the way in ...
        {[&] { fs::create_hard_link(link, recordedLink); }, 5},
        {[&] { fs::copy_file(module, recordedModule); }, 5},
        // ... and on the way out.
        {[&] { Install(), fs::rename(recordedModule, module); }, 5},
        {[&] { Install(), fs::remove(module); }, 5},
        {[&] { Install(), WriteFile(link.string() + ".unfinished-999999999", "x"); }, 0},
    };
    for (const auto& [end, nStatus] : ends) {
        end();
        RunTo(nStatus, "recorder status line");
        RunTo(2, "recorder install line");
        ExpectRemoved();
    }
}

TEST_F(RecorderCommandTest, NothingIsInstalledWhereItDoesNotFit) {
    ExpectRefused(3, WriteLackingLink(link));
    fs::remove(link);
    ExpectRefused(2, LINK_FILE_NAME);
    fs::copy_file(LinkFile("second_link"), link);
    if (!IS_WINDOWS) {
        fs::rename(module, "module");
        fs::create_symlink(fs::absolute("module"), module);
        ExpectRefused(2, "a link to one");
        fs::remove(module);
        fs::rename("module", module);
    }
    WriteFile("line/recorder.ini", "of somebody else");
    ExpectRefused(2, "recorder.ini already");
    fs::remove("line/recorder.ini");
}

TEST_F(RecorderCommandTest, NothingIsInstalledForWhoTakesMoreOfTheLinkThanTheRecorderHas) {
    // A host that looks into the simulated body: its names are no part of a camera link.
    fs::remove(link);
    fs::copy_file(BuildFolder() / LINK_FILE_NAME, link);
    fs::copy_file(ProgramFile(), "line/host");
    WriteFile("line/half", ReadFile("line/host").substr(0, 300'000));
    WriteFile("line/JigDll.log", std::string(5, '\n'));
    ExpectRefused(3, (fs::canonical("line") / "host").string() + " takes names from ");
    ExpectRefused(3, "Observe");
    // The same host does without them where the link never had them.
    fs::remove(link);
    fs::copy_file(LinkFile("second_link"), link);
    Install();
}

TEST_F(RecorderCommandTest, LibraryThatHasComeSinceStays) {
    Install();
    fs::remove(link);
    fs::copy_file(LinkFile("larger_link"), link);
    EXPECT_THAT(RunTo(5, "recorder remove line").output, HasSubstr("has come since and stays"));
    EXPECT_EQ(ReadFile(link), ReadFile(LinkFile("larger_link")));
    EXPECT_EQ(ReadFile(recordedLink), ReadFile(LinkFile("second_link")));
    EXPECT_EQ(ReadFile(module), ReadFile(BuildFolder() / MODULE_FILE_NAME));
}

}  // namespace
