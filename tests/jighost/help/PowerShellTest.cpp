// The completion for PowerShell, which is not at hand to run it: the table that it looks into.
#include <algorithm>
#include <sstream>

#include "jighost/help/Completion.h"
#include "jighost/operations/OperationTable.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

using testing::HasSubstr;

namespace {

/// What stands between the marks: rows of a command's path, a word behind it, what stands behind
/// that word, and what the word means.
std::string Table(const std::string& script) {
    const std::size_t start = script.find("@'\n") + 2;
    return script.substr(start, script.find("\n'@ ", start) + 1 - start);
}

TEST(JighostPowerShellTest, TableHasCommandsOptionsOperationsAndFields) {
    const FreshFolder folder;
    const JIGHOST_RUN run = RunJighost({"completion", "powershell"});
    EXPECT_EQ(run.exitCode, 0);
    const std::string table = Table(run.output);
    for (const std::string row :
         {"\tverify\t\tChecks ", "/body\tnew\t\t",
          "/log\t--failed\t\tLists failed operations alone\n", "/log\t--operation\toperation\t",
          "/dump\t--body\tfile\t", "/run\t*\tfield\t", "/list\t*\toperation\t",
          "/verify\t*\tfile\t", "operation\tSetABoardEepromData\tData[ Address= Count=\t"}) {
        EXPECT_THAT(table, HasSubstr('\n' + row));
    }
    for (const std::string& name : OperationNames()) {
        EXPECT_THAT(table, HasSubstr("\noperation\t" + name + '\t'));
    }
    // A row without what it means would be a completion that the shell refuses.
    std::istringstream rows(table.substr(1));
    for (std::string row; std::getline(rows, row);) {
        EXPECT_EQ(std::count(row.begin(), row.end(), '\t'), 3) << row;
        EXPECT_TRUE(row.find("\t*\t") != std::string::npos || !row.ends_with('\t')) << row;
    }
}

TEST(JighostPowerShellTest, TextsAreNoCommandsOfTheShell) {
    COMMAND_TEXT command;
    command.name = "go";
    command.description = "'@ isn't \"$(id)\"\n'@ `id`";
    COMMAND_TEXT program;
    program.name = "jighost";
    program.commands = {command};
    const std::string script = PowerShellCompletion(program);
    EXPECT_THAT(Table(script), HasSubstr("\n\tgo\t\t'@ isn't \"$(id)\" '@ `id`\n"));
    // The end of the table begins the only line that begins so.
    EXPECT_EQ(script.find("\n'@"), script.rfind("\n'@"));
}

}  // namespace
