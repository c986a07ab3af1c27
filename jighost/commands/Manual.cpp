// jighost manual: the manual pages as files.
#include <filesystem>
#include <memory>

#include "jighost/commands/Commands.h"
#include "jighost/help/ManualPage.h"
#include "platform/Utf8Path.h"
#include "platform/WholeFile.h"

static void WritePages(const COMMAND_TEXT& program, const std::filesystem::path& folder);

void AddManualCommand(Command& program, HOST& /*host*/) {
    Command command = program.AddCommand(
        "manual", "Writes the manual pages, one for jighost and one for each command");
    const auto pFolder = std::make_shared<std::string>();
    command.AddArgument("folder", *pFolder, "An existing folder; its files are replaced");
    command.SetFooter("Example:\n  mkdir man1 && jighost manual man1 && man -l man1/jighost-run.1");
    command.SetWork([program, pFolder] { WritePages(program.Text(), PathOf(*pFolder)); });
}

static void WritePages(const COMMAND_TEXT& program, const std::filesystem::path& folder) {
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error)) {
        throw HostError(EXIT_WRONG_USE, "there is no folder " + folder.string());
    }
    const auto write = [&folder](const std::string& name, const std::string& page) {
        WithExitCode(
            EXIT_HOST_ERROR, [&] { ReplaceFile(folder / (name + ".1"), page, OUTLASTS::KILLS); });
    };
    write(program.name, ProgramPage(program));
    for (const COMMAND_TEXT& command : program.commands) {
        write(program.name + '-' + command.name, CommandPage(program, command));
    }
}
