// What commands offer, in words: the one source of completions and manual pages.
#pragma once

#include <functional>
#include <string>
#include <vector>

/// An option, or an argument, which is known by its place.
struct OPTION_TEXT {
    std::vector<std::string> names;  ///< "-h" and "--help"; of an argument its one name, "file"
    std::string valueName;           ///< such as "FILE"; empty if it takes no value
    std::string text;
    bool bRequired = false;
    bool bRepeated = false;
    bool bValueLeftOut = false;  ///< whether it may stand without its value

    bool TakesValue() const { return !valueName.empty(); }
    bool TakesOperation() const;  ///< whether its value is the name of an operation
    bool TakesField() const;      ///< whether its value is a field of the operation ahead of it
};

struct COMMAND_TEXT {
    std::string name;
    std::string description;
    std::string footer;  ///< examples, and what else there is to know
    std::vector<OPTION_TEXT> arguments;
    std::vector<OPTION_TEXT> options;
    std::vector<COMMAND_TEXT> commands;
};

/// Calls `visit` for the program and then for each of its commands, with its path: "" for the
/// program, "/body" for a command of it, "/body/new" for a command of that one.
void VisitCommands(
    const COMMAND_TEXT& program,
    const std::function<void(const std::string& path, const COMMAND_TEXT&)>& visit);
