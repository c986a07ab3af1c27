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
    // What was typed stands among it wherever the terminal shows it.
    const std::string shown = terminal.ReadUntil("  (3), got RESULT_SUCCESS (0)");
    EXPECT_THAT(shown, HasSubstr("Label? "));
    EXPECT_THAT(shown, HasSubstr("jighost: parameter: serial: expected at most 9, got"));
}

}  // namespace
