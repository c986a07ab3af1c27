// The script for zsh: a function for each command, which tells _arguments what can stand behind it.
#include "jighost/help/Completion.h"
#include "jighost/help/CompletionWords.h"

// The last lines serve both a file in $fpath, whose first call is one for completions, and
// "source".
static const char SCRIPT[] = R"(#compdef jighost
# Completion of jighost for zsh: the file _jighost in a folder of $fpath, or, behind compinit,
#   source <(jighost completion zsh)
_jighost_operations() {
    local -a operations=(
@OPERATIONS@    )
    _describe operation operations
}

_jighost_fields() {
    local word
    for word in $words; do
        case $word in
@FIELDS@        esac
    done
}
@FUNCTIONS@
if [[ $funcstack[1] == _jighost ]]; then
    _jighost "$@"
else
    compdef _jighost jighost
fi
)";

static const char FUNCTION[] = R"(
_jighost@NAME@() {
    _arguments@ARGUMENTS@
}
)";

static const char FUNCTION_WITH_COMMANDS[] = R"(
_jighost@NAME@() {
    local curcontext=$curcontext state
    local -a commands=(
@COMMANDS@    )
    _arguments -C@ARGUMENTS@ \
        '1:command:->command' \
        '*::argument:->argument'
    case $state in
        command) _describe command commands ;;
        argument)
            case $words[1] in
@BRANCHES@            esac ;;
    esac
}
)";

static std::string Quoted(const std::string& text) {
    return '\'' + Filled(text, {{"'", "'\\''"}}) + '\'';
}

/// A name with what it means, as _describe takes it.
static std::string Described(const std::string& name, const std::string& text) {
    return "        " + Quoted(name + ':' + text) + '\n';
}

static std::string OperationLines() {
    std::string lines;
    for (const std::string& name : OperationNames()) {
        lines += Described(name, FindOperation(name)->description);
    }
    return lines;
}

static std::string FieldBranch(const std::string& name, const std::string& fields) {
    return "            " + name + ") compadd -S '' -- '" + Filled(fields, {{" ", "' '"}}) +
           "'; return ;;\n";
}

static std::string ValueText(const OPTION_TEXT& option, const std::string& name) {
    const char* pszAction = option.TakesOperation() ? "_jighost_operations"
                            : option.TakesField()   ? "_jighost_fields"
                                                    : "_files";
    return ':' + name + ':' + pszAction;
}

/// What _arguments is told of one option, by one of its names.
static std::string OptionText(const OPTION_TEXT& option, const std::string& name) {
    const std::string value = option.TakesValue() ? ValueText(option, option.valueName) : "";
    return (option.bRepeated ? "*" : "") + name + (option.TakesValue() ? "=" : "") + '[' +
           Escaped(option.text, "[]:\\") + ']' + (option.bValueLeftOut ? ":" : "") + value;
}

static std::string Arguments(const COMMAND_TEXT& command) {
    std::string lines;
    for (const OPTION_TEXT& option : command.options) {
        for (const std::string& name : option.names) {
            lines += " \\\n        " + Quoted(OptionText(option, name));
        }
    }
    for (const OPTION_TEXT& argument : command.arguments) {
        const std::string number = argument.bRepeated ? "*" : argument.bRequired ? "" : ":";
        lines += " \\\n        " + Quoted(number + ValueText(argument, argument.names.back()));
    }
    return lines;
}

static std::string Function(const std::string& path, const COMMAND_TEXT& command) {
    const std::string name = Filled(path, {{"/", "_"}});
    std::string described;
    std::string branches;
    for (const COMMAND_TEXT& each : command.commands) {
        described += Described(each.name, each.description);
        branches +=
            "                " + each.name + ") _jighost" + name + '_' + each.name + " ;;\n";
    }
    return Filled(
        command.commands.empty() ? FUNCTION : FUNCTION_WITH_COMMANDS,
        {{"@NAME@", name},
         {"@COMMANDS@", described},
         {"@ARGUMENTS@", Arguments(command)},
         {"@BRANCHES@", branches}});
}

std::string ZshCompletion(const COMMAND_TEXT& program) {
    std::string functions;
    VisitCommands(program, [&](const std::string& path, const COMMAND_TEXT& command) {
        functions += Function(path, command);
    });
    return Filled(
        SCRIPT, {{"@OPERATIONS@", OperationLines()},
                 {"@FIELDS@", FieldBranches(FieldBranch)},
                 {"@FUNCTIONS@", functions}});
}
