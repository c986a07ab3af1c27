// Command lines, by the library CLI11.
#include "jighost/commands/Command.h"

#include <CLI/CLI.hpp>

#include "jighost/text/HostError.h"

/// What a script's empty variable leaves is not to pass for an option that is not there.
static std::string ExpectValue(const std::string& value) {
    return value.empty() ? "expected a value, got none" : "";
}

Command Command::AddCommand(const std::string& name, const std::string& description) {
    return Command(*m_pApp->add_subcommand(name, description));
}

void Command::RequireCommand() {
    m_pApp->require_subcommand(1);
}

void Command::SetFooter(const std::string& text) {
    m_pApp->footer(text);
}

void Command::SetWork(const std::function<void()>& work) {
    m_pApp->callback([pApp = m_pApp, work] {
        if (pApp->get_subcommands().empty()) {
            work();
        }
    });
}

void Command::AddArgument(const std::string& name, std::string& value, const std::string& text) {
    m_pApp->add_option(name, value, text)->required();
}

void Command::AddOptionalArgument(
    const std::string& name, std::optional<std::string>& value, const std::string& text) {
    m_pApp->add_option(name, value, text);
}

void Command::AddOption(
    const std::string& name, std::string& value, const std::string& text,
    const std::string& valueName) {
    m_pApp->add_option(name, value, text)->type_name(valueName)->check(ExpectValue);
}

void Command::AddRest(
    const std::string& name, std::vector<std::string>& values, const std::string& text,
    const std::string& valueName) {
    m_pApp->add_option(name, values, text)->type_name(valueName);
}

void Command::AddRepeatedOption(
    const std::string& name, std::vector<std::string>& values, const std::string& text,
    const std::string& valueName) {
    m_pApp->add_option(name, values, text)->type_name(valueName)->allow_extra_args(false);
}

void Command::AddFlag(const std::string& name, bool& value, const std::string& text) {
    m_pApp->add_flag(name, value, text);
}

void Command::AddOpenOption(
    const std::string& name, const ValueTaker& take, const std::string& text,
    const std::string& valueName, const ValueCheck& check) {
    const auto takeFirst = [take](const std::vector<std::string>& values) {
        take(values.front());
        return true;
    };
    m_pApp->add_option(name, takeFirst, text)->type_name(valueName)->check(check)->expected(0, 1);
}

static OPTION_TEXT TextOf(const CLI::Option& option) {
    OPTION_TEXT text;
    for (const std::string& name : option.get_snames()) {
        text.names.push_back('-' + name);
    }
    for (const std::string& name : option.get_lnames()) {
        text.names.push_back("--" + name);
    }
    if (option.get_positional()) {
        text.names.push_back(option.get_name());
    }
    const bool bValue = option.get_items_expected_max() > 0;
    text.valueName = bValue ? option.get_type_name() : "";
    text.text = option.get_description();
    text.bRequired = option.get_required();
    text.bRepeated = option.get_expected_max() > 1;
    text.bValueLeftOut = bValue && option.get_items_expected_min() == 0;
    return text;
}

COMMAND_TEXT Command::Text() const {
    COMMAND_TEXT text;
    text.name = m_pApp->get_name();
    text.description = m_pApp->get_description();
    text.footer = m_pApp->get_footer();
    for (const CLI::Option* pOption : m_pApp->get_options()) {
        auto& options = pOption->get_positional() ? text.arguments : text.options;
        options.push_back(TextOf(*pOption));
    }
    for (CLI::App* pApp : m_pApp->get_subcommands([](const CLI::App*) { return true; })) {
        text.commands.push_back(Command(*pApp).Text());
    }
    return text;
}

CommandLine::CommandLine(
    const std::string& program, const std::string& description, const std::string& version)
    : m_pApp(std::make_unique<CLI::App>(description, program)) {
    m_pApp->allow_windows_style_options(false);  // "/x" is a path on each system
    m_pApp->set_version_flag("--version", version, "Shows version, commit and build");
    m_pApp->require_subcommand(0, 1);
}

CommandLine::~CommandLine() = default;

void CommandLine::Run(int argc, const char* const* argv) {
    try {
        m_pApp->parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        if (e.get_exit_code() == 0) {  // --help or --version
            m_pApp->exit(e);
            return;
        }
        throw HostError(EXIT_WRONG_USE, std::string(e.what()) + " (jighost --help shows the use)");
    }
    if (m_pApp->get_subcommands().empty()) {
        throw HostError(EXIT_WRONG_USE, "there is no command given (jighost --help shows all)");
    }
}
