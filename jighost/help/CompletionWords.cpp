// Texts joined and filled in; names taken from commands and from the table of operations.
#include "jighost/help/CompletionWords.h"

#include <algorithm>

std::string Filled(
    std::string script, const std::vector<std::pair<std::string, std::string>>& texts) {
    for (const auto& [mark, text] : texts) {
        std::size_t place = script.find(mark);
        while (place != std::string::npos) {
            script.replace(place, mark.size(), text);
            place = script.find(mark, place + text.size());
        }
    }
    return script;
}

std::string Joined(const std::vector<std::string>& words, const std::string& separator) {
    std::string text;
    for (const std::string& word : words) {
        text += (text.empty() ? "" : separator) + word;
    }
    return text;
}

std::string Escaped(const std::string& text, const std::string& special) {
    std::string escaped;
    for (const char character : text) {
        escaped += special.find(character) == std::string::npos ? "" : "\\";
        escaped += character;
    }
    return escaped;
}

std::vector<std::string> CommandPaths(const COMMAND_TEXT& program) {
    std::vector<std::string> paths;
    VisitCommands(program, [&](const std::string& path, const COMMAND_TEXT&) {
        if (!path.empty()) {
            paths.push_back(path);
        }
    });
    return paths;
}

std::vector<std::string> CommandPaths(
    const COMMAND_TEXT& program, bool (OPTION_TEXT::*takes)() const) {
    std::vector<std::string> paths;
    VisitCommands(program, [&](const std::string& path, const COMMAND_TEXT& command) {
        if (std::any_of(command.arguments.begin(), command.arguments.end(), std::mem_fn(takes))) {
            paths.push_back(path);
        }
    });
    return paths;
}

std::string FieldWords(const RECORD& record) {
    std::vector<std::string> words;
    for (const FIELD& field : record.fields) {
        words.push_back(std::string(field.name) + (field.count > 1 ? "[" : "="));
    }
    return Joined(words);
}

std::string FieldBranches(
    const std::function<std::string(const std::string& name, const std::string& fields)>& branch) {
    std::string branches;
    for (const std::string& name : OperationNames()) {
        const RECORD& record = *FindOperation(name)->record;
        if (!record.fields.empty()) {
            branches += branch(name, FieldWords(record));
        }
    }
    return branches;
}
