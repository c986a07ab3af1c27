// What the completion scripts of all shells are made of.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "jighost/help/CommandText.h"
#include "jighost/operations/OperationTable.h"

/// The script with each of its marks, such as "@FIELDS@", replaced by a text.
std::string Filled(
    std::string script, const std::vector<std::pair<std::string, std::string>>& texts);

/// The words with `separator` between them.
std::string Joined(const std::vector<std::string>& words, const std::string& separator = " ");

/// The text with a backslash before each of the `special` characters.
std::string Escaped(const std::string& text, const std::string& special);

/// The paths of all commands but the program.
std::vector<std::string> CommandPaths(const COMMAND_TEXT& program);
/// Those with an argument for which `takes` holds.
std::vector<std::string> CommandPaths(
    const COMMAND_TEXT& program, bool (OPTION_TEXT::*takes)() const);

/// The fields of an operation's record as a person begins them behind "run OPERATION", such as
/// "Data[ Address= Count=".
std::string FieldWords(const RECORD& record);

/// For each operation with a record what `branch` makes of its name and of its FieldWords.
std::string FieldBranches(
    const std::function<std::string(const std::string& name, const std::string& fields)>& branch);
