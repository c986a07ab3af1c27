// The script for fish: a line for each word that can stand behind a command, with what it means.
#include "jighost/help/Completion.h"
#include "jighost/help/CompletionWords.h"

static const char SCRIPT[] = R"(# Completion of jighost for fish:  jighost completion fish | source

# Whether the command of the line so far is the one of this path.
function __jighost_is
    set -l command ''
    for word in (commandline -opc)[2..]
        switch $command/$word
            case @COMMANDS@
                set command $command/$word
        end
    end
    test "$command" = "$argv[1]"
end

function __jighost_operations
    printf '%s\t%s\n' \
@OPERATIONS@
end

# The fields of the operation that stands on the line; the operations if there is none.
function __jighost_fields
    for word in (commandline -opc)
        switch $word
@FIELDS@        end
    end
    __jighost_operations
end

complete -c jighost -f
@LINES@)";

static std::string Quoted(const std::string& text) {
    return '\'' + Escaped(text, "\\'") + '\'';
}

static std::string OperationLines() {
    std::vector<std::string> lines;
    for (const std::string& name : OperationNames()) {
        lines.push_back("        " + name + ' ' + Quoted(FindOperation(name)->description));
    }
    return Joined(lines, " \\\n");
}

static std::string FieldBranch(const std::string& name, const std::string& fields) {
    return "            case " + name + "\n                printf '%s\\n' '" +
           Filled(fields, {{" ", "' '"}}) + "'\n                return\n";
}

/// What can stand for the value, by a command of the script or by its file name.
static std::string ValueText(const OPTION_TEXT& option) {
    return option.TakesOperation() ? " -a '(__jighost_operations)'"
           : option.TakesField()   ? " -a '(__jighost_fields)'"
                                   : " -F";
}

static std::string OptionText(const OPTION_TEXT& option) {
    std::string text;
    for (const std::string& name : option.names) {
        text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    }
    return text + (option.TakesValue() ? " -r" + ValueText(option) : "") + " -d " +
           Quoted(option.text);
}

static std::string Lines(const std::string& path, const COMMAND_TEXT& command) {
    const std::string start = "complete -c jighost -n '__jighost_is \"" + path + "\"'";
    std::string lines;
    for (const OPTION_TEXT& option : command.options) {
        lines += start + OptionText(option) + '\n';
    }
    // The fields bring the operations with them.
    if (!command.arguments.empty()) {
        lines += start + ValueText(command.arguments.back()) + '\n';
    }
    for (const COMMAND_TEXT& each : command.commands) {
        lines += start + " -a " + each.name + " -d " + Quoted(each.description) + '\n';
    }
    return lines;
}

std::string FishCompletion(const COMMAND_TEXT& program) {
    std::string lines;
    VisitCommands(program, [&](const std::string& path, const COMMAND_TEXT& command) {
        lines += Lines(path, command);
    });
    return Filled(
        SCRIPT, {{"@COMMANDS@", Joined(CommandPaths(program))},
                 {"@OPERATIONS@", OperationLines()},
                 {"@FIELDS@", FieldBranches(FieldBranch)},
                 {"@LINES@", lines}});
}
