// A person at a terminal who is asked.
#include "tests/support/Support.h"
#include "tests/support/posix/Shell.h"
#include "tests/support/posix/Terminal.h"

using testing::HasSubstr;

namespace {

TEST_F(JighostTest, MissingValueIsAskedForUntilItIsOne) {
    WriteFile(
        "asks.yaml",
        "format: 2\nparameters:\n  serial: {type: unsigned 32 bits, max: 9, question: \"Label?\"}\n"
        "steps:\n  - {operation: GetOwnerName, name: \"body ${serial}\", expect: 3}\n");
    const Terminal terminal;
    terminal.Type("10\n7\n");
    const JIGHOST_RUN run =
        RunShell("\"$0\" sequence asks.yaml <" + terminal.path + " 2>" + terminal.path);
    EXPECT_EQ(run.exitCode, 5);
    EXPECT_THAT(run.output, HasSubstr("  1  body 7 "));
    const std::string shown = terminal.ReadUntil("Label?");
    EXPECT_THAT(shown, HasSubstr("Label? jighost: parameter: serial: expected at most 9, got"));
}

}  // namespace
