// jighost completion: the scripts by which shells complete command lines of jighost.
#include <iostream>

#include "jighost/commands/Commands.h"
#include "jighost/help/Completion.h"

static void AddShell(
    Command& program, Command& command, const std::string& shell, const std::string& use,
    std::string (*script)(const COMMAND_TEXT& program)) {
    Command each = command.AddCommand(shell, "The script for " + shell);
    each.SetFooter("Example:\n  " + use);
    each.SetWork([program, script] { std::cout << script(program.Text()); });
}

void AddCompletionCommand(Command& program, HOST& /*host*/) {
    static const char FOR_BASH[] = "source <(jighost completion bash)";
    static const char FOR_ZSH[] = "source <(jighost completion zsh)";
    static const char FOR_FISH[] = "jighost completion fish | source";
    static const char FOR_POWERSHELL[] =
        "jighost completion powershell | Out-String | Invoke-Expression";
    Command command =
        program.AddCommand("completion", "Prints a script that completes jighost's command lines");
    command.RequireCommand();
    command.SetFooter(
        std::string("Examples:\n  ") + FOR_BASH + "\n  " + FOR_ZSH + "\n  " + FOR_FISH + "\n  " +
        FOR_POWERSHELL);
    AddShell(program, command, "bash", FOR_BASH, BashCompletion);
    AddShell(program, command, "zsh", FOR_ZSH, ZshCompletion);
    AddShell(program, command, "fish", FOR_FISH, FishCompletion);
    AddShell(program, command, "powershell", FOR_POWERSHELL, PowerShellCompletion);
}
