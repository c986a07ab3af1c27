// Files of a recording: their names, the space that they have, and what marks a library.
#include "recorder/Recording.h"

#include "platform/Surroundings.h"
#include "recorder/LogGrowth.h"
#include "recorder/RecordingName.h"
#include "recorder/Sha256.h"
#include "tests/support/Support.h"

using testing::HasSubstr;
using testing::StartsWith;

namespace fs = std::filesystem;

namespace {

TEST(RecordingTest, HashIsThatOfOtherPrograms) {
    using Recorder::Sha256;
    // The examples of the standard.
    EXPECT_EQ(Sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(Sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(
        Sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
        "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
    EXPECT_EQ(
        Sha256(std::string(1'000'000, 'a')),
        "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(RecordingTest, NamesTellMomentMachineAndProcess) {
    Recorder::RECORDING_NAME name = Recorder::NewName(std::time(nullptr));
    EXPECT_EQ(name.process, ProcessNumber());
    std::optional<Recorder::RECORDING_NAME> former;
    for (const unsigned number : {1U, 2U, 12U}) {
        name.number = number;
        const auto parsed = Recorder::ParseFileName(Recorder::FileName(name));
        EXPECT_EQ(parsed, name);
        EXPECT_LT(former, parsed);
        former = parsed;
    }
    for (const char* pszOther :
         {"20261122_210659_line.jsonl", "20261122_210659_line_4711.json", "notes.jsonl",
          "20261122_210659_line_4711_1.jsonl", "20261122_210659_line_4711_x.jsonl"}) {
        EXPECT_FALSE(Recorder::ParseFileName(pszOther)) << pszOther;
    }
}

TEST(RecordingTest, SpaceIsBoundedByWholeFiles) {
    const FreshFolder folder;
    const std::uint64_t keep = 40'000;
    const std::string machine = Recorder::NewName(0).machine;
    const std::string ours = "20201122_210659_" + machine + "_999999999.jsonl";
    const std::string foreign = "20201122_210659_elsewhere_999999999.jsonl";
    const std::string text(keep, '.');
    for (const std::string& name : {ours, foreign, std::string("notes.txt")}) {
        WriteFile(name, text);
    }
    std::vector<std::string> continued;
    const auto headText = [&](const Recorder::BEGINNING& beginning) {
        continued.push_back(beginning.continues);
        return std::string("head\n");
    };
    Recorder::Recording recording(".", keep, "failed", headText);
    EXPECT_FALSE(fs::exists(ours));
    for (int i = 0; i < 1000; ++i) {
        recording.Write(
            std::string(99, 'x') + "\n",
            i % 10 == 0 ? Recorder::PLACE::BETWEEN_OPERATIONS : Recorder::PLACE::WITHIN_OPERATION);
        std::uint64_t sum = 0;
        for (const auto& file : Recorder::RecordingsIn(".")) {
            sum += file.name.machine == machine ? file.size : 0;
        }
        ASSERT_LE(sum, keep);
    }
    // Each file goes on behind the one before it; what is left is a good part of what may be.
    EXPECT_GT(continued.size(), 10U);
    EXPECT_EQ(continued.front(), "");
    for (std::size_t i = 1; i < continued.size(); ++i) {
        EXPECT_TRUE(Recorder::ParseFileName(continued[i])) << continued[i];
    }
    const auto files = Recorder::RecordingsIn(".");
    EXPECT_GT(files.size(), 3U);
    EXPECT_EQ(files.front().path.filename(), foreign);
    EXPECT_THAT(ReadFile(files.back().path), StartsWith("head\nxxx"));
    EXPECT_EQ(ReadFile("notes.txt"), text);
}

TEST(RecordingTest, TextOfTheLogIsBounded) {
    const std::size_t longest = Recorder::LogGrowth::LONGEST;
    const FreshFolder folder;
    const std::string former = "> former\n";
    WriteFile("JigDll.log", former);
    Recorder::LogGrowth log;
    EXPECT_EQ(log.TextFrom(log.NoteLine("none")).text, "");
    const std::string line = "> a line\n";
    const std::string text = line + std::string(longest, '.') + "\n";
    WriteFile("JigDll.log", former + text);
    const Recorder::GROWN_TEXT grown = log.TextFrom(log.NoteLine("> "));
    EXPECT_TRUE(grown.text == text.substr(0, longest));
    EXPECT_EQ(grown.leftOut, line.size() + 1);
    // Lines of the same moment that nobody asked for stand ahead of it.
    log.NoteLine("> ");
    log.NoteLine("> ");
    WriteFile("JigDll.log", former + text + "> 1\n> 2\n> 3\n> 4\n");
    EXPECT_EQ(log.TextFrom(log.NoteLine("> ")).text, "> 3\n> 4\n");
}

TEST(RecordingTest, NothingIsLeftOfAProcessThatDidNothing) {
    const FreshFolder folder;
    {
        const Recorder::Recording recording(
            ".", 0, "failed", [](const Recorder::BEGINNING&) { return "head\n"; });
        EXPECT_EQ(Recorder::RecordingsIn(".").size(), 1U);
    }
    EXPECT_TRUE(fs::is_empty("."));
    {
        const Recorder::Recording nowhere(
            "gone", 0, "failed", [](const Recorder::BEGINNING&) { return "head\n"; });
    }
    EXPECT_THAT(ReadFile("failed"), HasSubstr("No such file or directory"));
}

}  // namespace
