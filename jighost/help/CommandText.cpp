// What an option takes by its name, and the way through all commands.
#include "jighost/help/CommandText.h"

bool OPTION_TEXT::TakesOperation() const {
    return names.back() == "operation" || names.back() == "--operation";
}

bool OPTION_TEXT::TakesField() const {
    return names.back() == "fields";
}

static void Visit(
    const COMMAND_TEXT& command, const std::string& path,
    const std::function<void(const std::string&, const COMMAND_TEXT&)>& visit) {
    visit(path, command);
    for (const COMMAND_TEXT& each : command.commands) {
        Visit(each, path + '/' + each.name, visit);
    }
}

void VisitCommands(
    const COMMAND_TEXT& program,
    const std::function<void(const std::string& path, const COMMAND_TEXT&)>& visit) {
    Visit(program, "", visit);
}
