// What jighost tells of itself: its completions in the shells themselves, its manual pages as the
// formatter shows them.
#include "jighost/help/Completion.h"
#include "jighost/help/ManualPage.h"
#include "tests/support/Support.h"
#include "tests/support/posix/Shell.h"

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::StartsWith;

/// What a command of a shell prints, with standard error; "$0" in it is jighost.
static std::string Printed(const std::string& shell, const std::string& command) {
    Process process(shell, {"-c", "exec 2>&1; " + command, JighostFile()});
    std::string output;
    while (const auto line = process.ReadLine()) {
        output += *line + '\n';
    }
    return output;
}

// --- Completions ---

/// What a line behind "jighost" can end with.
static const std::pair<std::string, std::string> COMPLETED[] = {
    {"ver", "verify"},
    {"body ", "new show"},
    {"log --f", "--failed --follow"},
    {"run GetBodyI", "GetBodyID"},
    {"list GetBodyI", "GetBodyID"},
    {"log --operation SaveBody", "SaveBodyID"},
    {"run SetBodyID Code", "CodePair= CodeDigitHigh= CodeDigitLow="},
    {"run SetABoardEepromData D", "Data["},
    {"dump --body x", ""},
    {"list SetBodyID CodePair", ""},
};

static std::string BashCompleted(const std::string& line) {
    return Printed(
        "/bin/bash", "source <(\"$0\" completion bash); compopt() { :; }; COMP_WORDS=(jighost " +
                         line + (line.ends_with(' ') ? "''" : "") +
                         "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _jighost; "
                         "printf '%s\\n' \"${COMPREPLY[@]}\"");
}

/// Each word with a tab and what it means.
static std::string FishCompleted(const std::string& line, const std::string& filter = "") {
    return Printed(
        "/bin/sh",
        "\"$0\" completion fish >script; HOME=. fish --no-config -c \"source script; "
        "complete -C 'jighost " +
            line + "'\"" + filter);
}

TEST(JighostCompletionTest, BashAndFishCompleteCommandsOptionsOperationsAndFields) {
    const FreshFolder folder;
    for (const auto& [line, words] : COMPLETED) {
        const auto areThese = testing::UnorderedElementsAreArray(Words(words));
        EXPECT_THAT(Words(BashCompleted(line)), areThese) << line;
        EXPECT_THAT(Words(FishCompleted(line, "|cut -f 1")), areThese) << line;
    }
    EXPECT_THAT(FishCompleted("ver"), StartsWith("verify\tChecks "));
    EXPECT_THAT(FishCompleted("log --fa"), StartsWith("--failed\tLists "));
    EXPECT_THAT(FishCompleted("run GetBodyI"), StartsWith("GetBodyID\treads "));
    EXPECT_EQ(FishCompleted("verify --body scr"), "script\n");
}

// Outside a line editor zsh completes nothing: what its own functions are given is seen instead.
TEST(JighostCompletionTest, ZshIsToldTheSame) {
    const FreshFolder folder;
    const auto told = [](const std::string& call) {
        return Printed(
            "/bin/zsh",
            "compdef() { : }; _describe() { print -l -- ${(P)2} }; compadd() { print -l -- \"$@\" "
            "}; "
            "_arguments() { print -rl -- \"$@\"; state=command }; source <($0 completion zsh); " +
                call);
    };
    EXPECT_THAT(told("_jighost"), ContainsRegex("\n--version\\[[^\n]+\\]\n(.*\n)*verify:Checks "));
    EXPECT_THAT(told("_jighost_body"), ContainsRegex("\nnew:[^\n]+\nshow:"));
    const std::string run = told("_jighost_run");
    EXPECT_THAT(run, HasSubstr("\n--hex=[The record's bytes, before any fields]:BYTES:_files\n"));
    EXPECT_THAT(run, HasSubstr("\n:operation:_jighost_operations\n*:fields:_jighost_fields\n"));
    EXPECT_THAT(told("_jighost_operations"), HasSubstr("\nGetBodyID:reads the body ID"));
    EXPECT_EQ(
        told("words=(run SetABoardEepromData D); _jighost_fields"),
        "-S\n\n--\nData[\nAddress=\nCount=\n");
}

// --- Texts that mean something to a shell or to the formatter ---

static COMMAND_TEXT HostileProgram() {
    COMMAND_TEXT command;
    command.name = "go";
    command.description = ".br isn't C:\\new [or \"$(id)\"] `id`";
    command.footer = "Example:\n  .go 'a\\b' ~ ^\n'notes' begin a line\n";
    command.options = {{{"--opt"}, "FILE", command.description}};
    COMMAND_TEXT program;
    program.name = "jighost";
    program.commands = {command};
    return program;
}

TEST(JighostCompletionTest, TextsAreNoCommandsOfTheShell) {
    const FreshFolder folder;
    WriteFile("script.zsh", ZshCompletion(HostileProgram()));
    EXPECT_EQ(Printed("/bin/zsh", "zsh -n script.zsh"), "");
    WriteFile("script.fish", FishCompletion(HostileProgram()));
    EXPECT_EQ(
        Printed(
            "/bin/sh",
            "HOME=. fish --no-config -c \"source script.fish; "
            "complete -C 'jighost g'\""),
        "go\t" + HostileProgram().commands[0].description + '\n');
}

/// Pages as plain text, with the formatter's warnings.
static std::string Formatted(const std::string& files) {
    return Printed("/bin/sh", "groff -ww -man -Tascii -P-cbou -rLL=100n " + files);
}

TEST(JighostManualTest, TextsStandInAPageAsTheyAre) {
    const FreshFolder folder;
    const COMMAND_TEXT program = HostileProgram();
    WriteFile("page", CommandPage(program, program.commands[0]));
    const std::string page = Formatted("page");
    EXPECT_THAT(page, HasSubstr("jighost-go - .br isn't C:\\new [or \"$(id)\"] `id`\n"));
    EXPECT_THAT(page, HasSubstr("  --opt FILE\n"));
    EXPECT_THAT(page, HasSubstr("EXAMPLES\n       .go 'a\\b' ~ ^\n"));
    EXPECT_THAT(page, HasSubstr("DESCRIPTION\n       'notes' begin a line\n"));
}

TEST(JighostManualTest, EachCommandHasAPageWithoutWarnings) {
    const FreshFolder folder;
    ASSERT_EQ(RunJighost({"manual", "."}).exitCode, 0);
    EXPECT_EQ(Printed("/bin/sh", "groff -ww -man -Tutf8 -z *.1"), "");
    const std::string program = Formatted("jighost.1");
    for (const char* pszName : {"list", "run", "dump", "sequence", "body", "log", "manual"}) {
        const std::string page = std::string("jighost-") + pszName;
        EXPECT_THAT(program, HasSubstr("       " + page + "(1)\n"));
        EXPECT_THAT(
            Formatted(page + ".1"), HasSubstr("SYNOPSIS\n       jighost " + page.substr(8)));
    }
    EXPECT_THAT(Formatted("jighost-run.1"), HasSubstr("\n       --trace [FILE]\n"));
    EXPECT_THAT(
        Formatted("jighost-body.1"), HasSubstr("\n       jighost body show [OPTIONS] file"));
}
