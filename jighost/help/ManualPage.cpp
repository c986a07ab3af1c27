// Pages are put together section by section; every text of a command is escaped on its way in.
#include "jighost/help/ManualPage.h"

#include <sstream>

#include "jighost/help/CompletionWords.h"
#include "jighost/help/Version.h"

/// A text as it stands, also where it begins a line: no character of it is a command of the page.
static std::string Plain(const std::string& text) {
    static const std::vector<std::pair<std::string, std::string>> names = {
        {"\\", "\\e"},  {"-", "\\-"},   {"'", "\\(aq"},
        {"`", "\\(ga"}, {"^", "\\(ha"}, {"~", "\\(ti"}};
    const std::string plain = Filled(text, names);
    return plain.starts_with('.') ? "\\&" + plain : plain;
}

static std::string Bold(const std::string& text) {
    return "\\fB" + Plain(text) + "\\fR";
}

static std::string Italic(const std::string& text) {
    return "\\fI" + Plain(text) + "\\fR";
}

/// A reference to another page, such as jighost-run(1).
static std::string PageReference(const std::string& page) {
    return Bold(page) + "(1)";
}

static std::string Heading(const std::string& page, const std::string& description) {
    return ".TH " + Plain(page) + " 1 \"\" \"TuneBench " + Version() + "\" \"TuneBench\"\n" +
           ".SH NAME\n" + Plain(page) + " \\- " + Plain(description) + '\n';
}

static std::string ArgumentUse(const OPTION_TEXT& argument) {
    const std::string name = Italic(argument.names.back()) + (argument.bRepeated ? "..." : "");
    return argument.bRequired ? ' ' + name : " [" + name + ']';
}

static std::string Use(const std::string& name, const COMMAND_TEXT& command) {
    std::string use = Bold(name) + " [" + Italic("OPTIONS") + ']';
    for (const OPTION_TEXT& argument : command.arguments) {
        use += ArgumentUse(argument);
    }
    return use + (command.commands.empty() ? "" : ' ' + Italic("COMMAND")) + '\n';
}

static std::string Entry(const std::string& head, const std::string& text) {
    return ".TP\n" + head + '\n' + Plain(text) + '\n';
}

static std::string OptionHead(const OPTION_TEXT& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.names) {
        names.push_back(Bold(name));
    }
    const std::string value = Italic(option.valueName);
    return Joined(names, ", ") + (!option.TakesValue()   ? ""
                                  : option.bValueLeftOut ? " [" + value + ']'
                                                         : ' ' + value);
}

static std::string Arguments(const COMMAND_TEXT& command) {
    std::string entries;
    for (const OPTION_TEXT& argument : command.arguments) {
        entries += Entry(Italic(argument.names.back()), argument.text);
    }
    return entries;
}

static std::string Options(const COMMAND_TEXT& command) {
    std::string entries;
    for (const OPTION_TEXT& option : command.options) {
        entries += Entry(OptionHead(option), option.text);
    }
    return entries;
}

/// The commands that are part of another one.
static std::string InnerCommands(const std::string& name, const COMMAND_TEXT& command) {
    std::string text;
    for (const COMMAND_TEXT& inner : command.commands) {
        const std::string innerName = name + ' ' + inner.name;
        text += ".SS " + Plain(innerName) + '\n' + Use(innerName, inner) + ".PP\n" +
                Plain(inner.description) + '\n' + Arguments(inner) + Options(inner);
    }
    return text;
}

static std::string ProgramCommands(const COMMAND_TEXT& program) {
    std::string entries;
    for (const COMMAND_TEXT& command : program.commands) {
        entries += Entry(PageReference(program.name + '-' + command.name), command.description);
    }
    return entries;
}

namespace {

/// A footer's parts. Its examples are the lines that begin with two blanks.
struct FOOTER {
    explicit FOOTER(const std::string& text) {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            if (line.starts_with("  ")) {
                examples += Plain(line.substr(2)) + '\n';
            } else if (!line.starts_with("Example")) {
                notes += Plain(line) + '\n';
            }
        }
    }

    std::string examples;
    std::string notes;
};

}  // namespace

static std::string Section(const std::string& name, const std::string& text) {
    return text.empty() ? "" : ".SH " + name + '\n' + text;
}

/// Examples keep their lines.
static std::string Examples(const std::string& text) {
    return Section("EXAMPLES", text.empty() ? "" : ".nf\n" + text + ".fi\n");
}

std::string ProgramPage(const COMMAND_TEXT& program) {
    return Heading(program.name, program.description) +
           Section("SYNOPSIS", Use(program.name, program)) + Section("OPTIONS", Options(program)) +
           Section("COMMANDS", ProgramCommands(program)) +
           Section("EXIT STATUS", FOOTER(program.footer).notes);
}

std::string CommandPage(const COMMAND_TEXT& program, const COMMAND_TEXT& command) {
    const std::string name = program.name + ' ' + command.name;
    const FOOTER footer(command.footer);
    return Heading(program.name + '-' + command.name, command.description) +
           Section("SYNOPSIS", Use(name, command)) + Section("DESCRIPTION", footer.notes) +
           Section("ARGUMENTS", Arguments(command)) + Section("OPTIONS", Options(command)) +
           Section("COMMANDS", InnerCommands(name, command)) + Examples(footer.examples) +
           Section("EXIT STATUS", FOOTER(program.footer).notes) +
           Section("SEE ALSO", PageReference(program.name) + '\n');
}
