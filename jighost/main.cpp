// jighost: runs the module's operations from the command line.
#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "jighost/commands/Commands.h"
#include "jighost/session/Interrupt.h"

static const char EXIT_CODES[] =
    "Exit codes: 0 all as expected, 1 the host itself failed, 2 wrong use, 3 the module can't be\n"
    "loaded, 4 an operation failed, 5 an expectation is not met, 130 interrupted by Ctrl-C.\n"
    "Data goes to standard output, talk to standard error. The module writes its log, JigDll.log,\n"
    "to the current directory.";

static int Complain(const char* pszText, EXIT_CODE exitCode) {
    std::cerr << "jighost: " << pszText << '\n';
    return exitCode;
}

static void AddEverything(CLI::App& app, HOST& host) {
    app.require_subcommand(0, 1);
    app.footer(EXIT_CODES);
    AddListCommand(app, host);
    AddRunCommand(app, host);
    AddDumpCommand(app, host);
    AddSequenceCommand(app, host);
    AddReplayCommand(app, host);
    AddBodyCommand(app, host);
    AddDocsCommand(app, host);
    AddLogCommand(app, host);
    AddVerifyCommand(app, host);
    AddDiffCommand(app, host);
    AddDoctorCommand(app, host);
    AddCompletionCommand(app, host);
}

static int RunCommandLine(int argc, char** argv) {
    HOST host;
    CLI::App app(
        "Runs the factory operations of TuneBench.t460 against a simulated camera.", "jighost");
    AddEverything(app, host);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        if (e.get_exit_code() == 0) {  // --help
            return app.exit(e);
        }
        return Complain(
            (std::string(e.what()) + " (jighost --help shows the use)").c_str(), EXIT_WRONG_USE);
    }
    if (app.get_subcommands().empty()) {
        return Complain("there is no command given (jighost --help shows all)", EXIT_WRONG_USE);
    }
    return IsInterrupted() ? EXIT_INTERRUPTED : host.exitCode;
}

int main(int argc, char** argv) {
    try {
        return RunCommandLine(argc, argv);
    } catch (const HostError& e) {
        return Complain(e.what(), e.exitCode);
    } catch (const std::exception& e) {
        return Complain(e.what(), EXIT_HOST_ERROR);
    }
}
