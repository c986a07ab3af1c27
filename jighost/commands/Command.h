// What a command offers on the command line, and the reading of it. The library that does the work
// is known to Command.cpp alone: it takes a compiler longer than all the rest of a command.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "jighost/help/CommandText.h"

namespace CLI {
class App;
}  // namespace CLI

/// A command, or the program itself. Copies name the same one, which a CommandLine owns.
class Command {
  public:
    explicit Command(CLI::App& app) : m_pApp(&app) {}

    Command AddCommand(const std::string& name, const std::string& description);
    /// Makes one of its own commands part of each line.
    void RequireCommand();
    /// Stands at the end of the help text.
    void SetFooter(const std::string& text);
    /// Is called once the whole line has been read, unless the line names a command of its own.
    void SetWork(const std::function<void()>& work);

    // What these are given is left in the variable, which must live as long as the command. A name
    // without hyphens is that of an argument, which is known by its place.

    void AddArgument(const std::string& name, std::string& value, const std::string& text);
    void AddOptionalArgument(
        const std::string& name, std::optional<std::string>& value, const std::string& text);
    void AddOption(
        const std::string& name, std::string& value, const std::string& text,
        const std::string& valueName = "TEXT");
    /// Takes all that is left of the line.
    void AddRest(
        const std::string& name, std::vector<std::string>& values, const std::string& text,
        const std::string& valueName);
    /// May stand more than once, each time with one value.
    void AddRepeatedOption(
        const std::string& name, std::vector<std::string>& values, const std::string& text,
        const std::string& valueName);
    void AddFlag(const std::string& name, bool& value, const std::string& text);

    using ValueCheck = std::function<std::string(const std::string& value)>;
    using ValueTaker = std::function<void(const std::string& value)>;
    /// May stand without its value, which then is empty. `check` says what is wrong with a value,
    /// if anything.
    void AddOpenOption(
        const std::string& name, const ValueTaker& take, const std::string& text,
        const std::string& valueName, const ValueCheck& check);

    /// All that it offers, and its own commands with it.
    COMMAND_TEXT Text() const;

  private:
    CLI::App* m_pApp;
};

class CommandLine {
  public:
    /// `version` is what --version shows.
    CommandLine(
        const std::string& program, const std::string& description, const std::string& version);
    ~CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    Command Program() { return Command(*m_pApp); }
    /// Does the work of the command that the line names, or shows help or version. Throws
    /// EXIT_WRONG_USE for a line that can't be.
    void Run(int argc, const char* const* argv);

  private:
    std::unique_ptr<CLI::App> m_pApp;
};
