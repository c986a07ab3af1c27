// jighost --link: another camera link in the simulated body's place.
#include "platform/Program.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"
#include "tests/support/SupportLink.h"

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::string LIBRARY_KIND = IS_WINDOWS ? "Windows library" : "ELF library";

JIGHOST_RUN RunOnLink(const std::filesystem::path& link, std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--link", link.string()});
    return RunJighost(arguments);
}

// The file prefix of the second link is zeros.
TEST(JighostLinkTest, EveryCommandWorksOnTheOtherLink) {
    const FreshFolder folder;
    const auto run = [](const std::vector<std::string>& arguments) {
        return RunOnLink(LinkFile("second_link"), arguments);
    };
    EXPECT_THAT(run({"run", "GetFilePrefix"}).output, StartsWith("FilePrefix = \"\"\n"));
    const JIGHOST_RUN traced =
        run({"run", "SetFilePrefix", "--fault", "SetFilePrefix:2=0x2001", "--trace"});
    EXPECT_EQ(traced.exitCode, 4);
    EXPECT_THAT(traced.errors, HasSubstr("1 Get 0x1000006 8 -> 00 00 00 00 00 00 00 00 ("));
    EXPECT_THAT(traced.errors, HasSubstr("2 Set 0x1000007 8: 30 30 30 41 00 00 00 00 -> "));
    WriteFile(
        "sequence.yaml",
        "format: 1\nsteps:\n"
        "  - {operation: GetFilePrefix, expect_fields: {FilePrefix: IMG_}}\n");
    EXPECT_EQ(run({"sequence", "sequence.yaml"}).exitCode, 5);
    EXPECT_THAT(run({"dump", "."}).output, StartsWith("239 files, 3132188 bytes, "));
    EXPECT_EQ(run({"doctor"}).exitCode, 0);
}

TEST(JighostLinkTest, WhatIsNoOtherLinkIsRefused) {
    const FreshFolder folder;
    MakeIrregular("pipe");
    WriteFile("cut.so", ReadFile(LinkFile("second_link")).substr(0, 20'000));
    const std::pair<std::filesystem::path, std::string> wrong[] = {
        {"none.so", "there is no camera link none.so"},
        {"pipe", "there is no camera link pipe"},
        {"cut.so", "-bit " + LIBRARY_KIND + ", cut off ahead of its end"},
        {BuildFolder() / BODYLNK_FILE, "is no other camera link"},
        {BuildFolder() / MODULE_FILE, "is no camera link: it lacks "},
    };
    for (const auto& [link, message] : wrong) {
        const JIGHOST_RUN run = RunOnLink(link, {"run", "GetBodyID"});
        EXPECT_EQ(run.exitCode, 3);
        EXPECT_THAT(run.errors, HasSubstr(message));
    }
    const JIGHOST_RUN both = RunOnLink("a.so", {"run", "GetBodyID", "--body", "b.yaml"});
    EXPECT_EQ(both.exitCode, 2);
    EXPECT_THAT(both.errors, StartsWith("jighost: expected --body, "));
    const std::string name = WriteLackingLink("lacking.so");
    const JIGHOST_RUN doctor = RunOnLink("lacking.so", {"doctor"});
    EXPECT_EQ(doctor.exitCode, 3);
    EXPECT_THAT(doctor.output, ContainsRegex("failed +link functions without " + name + "\n"));
}

}  // namespace
