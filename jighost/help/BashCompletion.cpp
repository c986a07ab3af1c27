// The script for bash. Its tables say for each command, by its path, which words can stand there.
#include <set>

#include "jighost/help/Completion.h"
#include "jighost/help/CompletionWords.h"

// The loop finds the command of the line so far, and the operation that it names.
static const char SCRIPT[] = R"(# Completion of jighost for bash:  source <(jighost completion bash)
_jighost() {
    local operations="@OPERATIONS@"
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}
    local command= operation= words= word
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case "$command/$word" in
            @COMMANDS@) command+=/$word ;;
            *) [[ " $operations " != *" $word "* ]] || operation=${operation:-$word} ;;
        esac
    done
    case $prev in
        @OPERATION_OPTIONS@) COMPREPLY=($(compgen -W "$operations" -- "$cur")); return ;;
        @VALUE_OPTIONS@) return ;;
    esac
    if [[ $cur == -* ]]; then
        case $command in
@OPTIONS@        esac
    elif [[ -z $operation && $command == @(@COMMANDS_OF_OPERATIONS@) ]]; then
        words=$operations
    elif [[ -n $operation && $command == @(@COMMANDS_OF_FIELDS@) ]]; then
        compopt -o nospace
        case $operation in
@FIELDS@        esac
    else
        case $command in
@SUBCOMMANDS@        esac
    fi
    COMPREPLY=($(compgen -W "$words" -- "$cur"))
}
complete -o default -F _jighost jighost
)";

/// One branch of a "case".
static std::string Branch(const std::string& pattern, const std::string& words) {
    return "            '" + pattern + "') words=\"" + words + "\" ;;\n";
}

static std::string OptionBranches(const COMMAND_TEXT& program) {
    std::string branches;
    VisitCommands(program, [&](const std::string& path, const COMMAND_TEXT& command) {
        std::vector<std::string> names;
        for (const OPTION_TEXT& option : command.options) {
            names.push_back(option.names.back());
        }
        branches += Branch(path, Joined(names));
    });
    return branches;
}

static std::string SubcommandBranches(const COMMAND_TEXT& program) {
    std::string branches;
    VisitCommands(program, [&](const std::string& path, const COMMAND_TEXT& command) {
        std::vector<std::string> names;
        for (const COMMAND_TEXT& each : command.commands) {
            names.push_back(each.name);
        }
        branches += names.empty() ? "" : Branch(path, Joined(names));
    });
    return branches;
}

/// The options of all commands behind which a value stands that is the name of an operation, or is
/// not, as a pattern.
static std::string ValueOptions(const COMMAND_TEXT& program, bool bOperation) {
    std::set<std::string> names;
    VisitCommands(program, [&](const std::string&, const COMMAND_TEXT& command) {
        for (const OPTION_TEXT& option : command.options) {
            if (option.TakesValue() && option.TakesOperation() == bOperation) {
                names.insert(option.names.back());
            }
        }
    });
    return Joined({names.begin(), names.end()}, "|");
}

std::string BashCompletion(const COMMAND_TEXT& program) {
    return Filled(
        SCRIPT,
        {{"@OPERATIONS@", Joined(OperationNames())},
         {"@COMMANDS@", Joined(CommandPaths(program), "|")},
         {"@OPERATION_OPTIONS@", ValueOptions(program, true)},
         {"@VALUE_OPTIONS@", ValueOptions(program, false)},
         {"@OPTIONS@", OptionBranches(program)},
         {"@COMMANDS_OF_OPERATIONS@",
          Joined(CommandPaths(program, &OPTION_TEXT::TakesOperation), "|")},
         {"@COMMANDS_OF_FIELDS@", Joined(CommandPaths(program, &OPTION_TEXT::TakesField), "|")},
         {"@FIELDS@", FieldBranches(Branch)},
         {"@SUBCOMMANDS@", SubcommandBranches(program)}});
}
