// The completion for PowerShell, which is not at hand to run it: the table that it looks into.
#include <algorithm>
#include <map>
#include <set>
#include <sstream>

#include "jighost/help/Completion.h"
#include "jighost/operations/OperationTable.h"
#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

namespace {

/// What stands behind a word, and what the word means, by the path and the word.
std::map<std::string, std::string> Rows(const std::string& script) {
    const std::size_t start = script.find("@'\n") + 3;
    const std::size_t end = script.find("\n'@ ", start);
    std::map<std::string, std::string> rows;
    std::istringstream lines(script.substr(start, end - start));
    for (std::string line; std::getline(lines, line);) {
        EXPECT_EQ(std::count(line.begin(), line.end(), '\t'), 3) << line;
        const std::size_t second = line.find('\t', line.find('\t') + 1);
        EXPECT_TRUE(rows.emplace(line.substr(0, second), line.substr(second + 1)).second) << line;
    }
    return rows;
}

TEST(JighostPowerShellTest, TableHasCommandsOptionsOperationsAndFields) {
    const FreshFolder folder;
    const JIGHOST_RUN run = RunJighost({"completion", "powershell"});
    EXPECT_EQ(run.exitCode, 0);
    auto rows = Rows(run.output);
    EXPECT_EQ(rows["\tverify"].substr(0, 8), "\tChecks ");
    EXPECT_EQ(rows["/body\tnew"].substr(0, 1), "\t");
    EXPECT_EQ(rows["/log\t--failed"], "\tLists failed operations alone");
    EXPECT_EQ(rows["/log\t--operation"].substr(0, 10), "operation\t");
    EXPECT_EQ(rows["/dump\t--body"].substr(0, 5), "file\t");
    EXPECT_EQ(rows["/run\t*"], "field\t");
    EXPECT_EQ(rows["/list\t*"], "operation\t");
    EXPECT_EQ(rows["/verify\t*"], "file\t");
    EXPECT_EQ(rows["operation\tSetABoardEepromData"].substr(0, 22), "Data[ Address= Count=\t");
    for (const std::string& name : OperationNames()) {
        EXPECT_TRUE(rows.contains("operation\t" + name)) << name;
    }
    // A row without what it means would be a completion that the shell refuses.
    for (const auto& [word, rest] : rows) {
        EXPECT_TRUE(word.ends_with("\t*") || !rest.ends_with('\t')) << word;
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
    EXPECT_EQ(Rows(script)["\tgo"], "\t'@ isn't \"$(id)\" '@ `id`");
    // The end of the table begins the only line that begins so.
    EXPECT_EQ(script.find("\n'@"), script.rfind("\n'@"));
}

}  // namespace
