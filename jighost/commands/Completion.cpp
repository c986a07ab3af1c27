// jighost completion: a script by which bash completes command lines of jighost.
#include <iostream>
#include <set>

#include "jighost/commands/Commands.h"
#include "jighost/operations/OperationTable.h"

static void WriteBashCompletion(const Command& program);

void AddCompletionCommand(Command& program, HOST& /*host*/) {
    Command command =
        program.AddCommand("completion", "Prints a script that completes jighost's command lines");
    command.RequireCommand();
    command.SetFooter("Example:\n  source <(jighost completion bash)");
    Command bash = command.AddCommand("bash", "The script for bash");
    bash.SetFooter("Example:\n  source <(jighost completion bash)");
    bash.SetWork([program] { WriteBashCompletion(program); });
}

/// Ahead of the tables: finds the command of the line so far, and the operation of a run.
static const char SCRIPT_START[] =
    R"(# Completion of jighost for bash:  source <(jighost completion bash)
_jighost() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}
    local command= operation= words= word
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case "$command/$word" in
            )";

static const char BEHIND_COMMANDS[] = R"() command+=/$word ;;
            /run/*) [[ " $operations " != *" $word "* ]] || operation=${operation:-$word} ;;
        esac
    done
    case $prev in
        --operation) COMPREPLY=($(compgen -W "$operations" -- "$cur")); return ;;
        )";

static const char BEHIND_VALUE_OPTIONS[] = R"() return ;;
    esac
    if [[ $cur == -* ]]; then
        case $command in
)";

static const char BEHIND_OPTIONS[] = R"(        esac
    elif [[ $command == /run && -z $operation ]]; then
        words=$operations
    elif [[ -n $operation ]]; then
        compopt -o nospace
        case $operation in
)";

static const char BEHIND_FIELDS[] = R"(        esac
    else
        case $command in
)";

static const char SCRIPT_END[] = R"(        esac
    fi
    COMPREPLY=($(compgen -W "$words" -- "$cur"))
}
complete -o default -F _jighost jighost
)";

namespace {

/// What the script needs of the commands, collected over all of them.
struct COMMAND_TABLES {
    std::string paths;                   ///< all commands, such as "/run|/body|/body/new"
    std::string options;                 ///< a line for each command
    std::string subcommands;             ///< a line for each command that has some
    std::set<std::string> valueOptions;  ///< those behind which a value stands
};

}  // namespace

/// One branch of a "case".
static std::string Branch(const std::string& pattern, const std::string& words) {
    return "            '" + pattern + "') words=\"" + words + "\" ;;\n";
}

static void Append(std::string& list, const std::string& word, const char* separator = " ") {
    list += (list.empty() ? "" : separator) + word;
}

static void Collect(const Command& command, const std::string& path, COMMAND_TABLES& tables) {
    std::string options;
    for (const Command::OPTION& option : command.Options()) {
        Append(options, option.name);
        if (option.bValue) {
            tables.valueOptions.insert(option.name);
        }
    }
    tables.options += Branch(path, options);
    std::string subcommands;
    for (const Command& subcommand : command.Commands()) {
        const std::string subcommandPath = path + '/' + subcommand.Name();
        Append(subcommands, subcommand.Name());
        Append(tables.paths, subcommandPath, "|");
        Collect(subcommand, subcommandPath, tables);
    }
    if (!subcommands.empty()) {
        tables.subcommands += Branch(path, subcommands);
    }
}

static std::string NamesWithBlanks() {
    std::string names;
    for (const OPERATION_GROUP& group : OperationGroups()) {
        for (const OPERATION_INFO& info : group.operations) {
            Append(names, info.name);
        }
    }
    return names;
}

static std::string FieldBranches() {
    std::string branches;
    for (const OPERATION_GROUP& group : OperationGroups()) {
        for (const OPERATION_INFO& info : group.operations) {
            std::string fields;
            for (const FIELD& field : info.record->fields) {
                Append(fields, std::string(field.name) + (field.count > 1 ? "[" : "="));
            }
            if (!fields.empty()) {
                branches += Branch(info.name, fields);
            }
        }
    }
    return branches;
}

static void WriteBashCompletion(const Command& program) {
    COMMAND_TABLES tables;
    Collect(program, "", tables);
    std::string valueOptions;
    tables.valueOptions.erase("--operation");  // has a branch of its own
    for (const std::string& option : tables.valueOptions) {
        Append(valueOptions, option, "|");
    }
    std::string start = SCRIPT_START;
    const std::string LOCALS = "    local command=";
    start.insert(start.find(LOCALS), "    local operations=\"" + NamesWithBlanks() + "\"\n");
    std::cout << start << tables.paths << BEHIND_COMMANDS << valueOptions << BEHIND_VALUE_OPTIONS
              << tables.options << BEHIND_OPTIONS << FieldBranches() << BEHIND_FIELDS
              << tables.subcommands << SCRIPT_END;
}
