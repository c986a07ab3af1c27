// jighost --version.
#include <regex>

#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

TEST(JighostVersionTest, VersionCommitAndBuildAreTold) {
    const FreshFolder folder;
    const JIGHOST_RUN run = RunJighost({"--version"});
    EXPECT_EQ(run.exitCode, 0);
    const std::regex form(
        "jighost [0-9]+\\.[0-9]+\\.[0-9]+\n"
        "commit (unknown|[-.0-9a-z]*[0-9a-f]{10}(-dirty)?)\n"
        "build [A-Za-z]+, .*, (32|64) bits\n");
    EXPECT_TRUE(std::regex_match(run.output, form)) << run.output;
}
