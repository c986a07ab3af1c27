// jighost: runs the module's operations from the command line.
#include <exception>
#include <iostream>

#include "jighost/commands/Commands.h"
#include "jighost/help/Version.h"
#include "jighost/session/Interrupt.h"
#include "jighost/text/PlainText.h"

static const char EXIT_CODES[] =
    "Exit codes: 0 all as expected, 1 the host itself failed, 2 wrong use, 3 the module or\n"
    "the camera link can't be loaded, 4 an operation failed, 5 an expectation is not met,\n"
    "130 interrupted by Ctrl-C.\n"
    "Data goes to standard output, talk to standard error. The module writes its log, JigDll.log,\n"
    "to the current directory.";

static int Complain(const std::string& text, EXIT_CODE exitCode) {
    std::cerr << "jighost: " << text << '\n';
    return exitCode;
}

static void AddEverything(Command program, HOST& host) {
    program.SetFooter(EXIT_CODES);
    AddListCommand(program, host);
    AddRunCommand(program, host);
    AddDumpCommand(program, host);
    AddSequenceCommand(program, host);
    AddReplayCommand(program, host);
    AddBodyCommand(program, host);
    AddDocsCommand(program, host);
    AddLogCommand(program, host);
    AddVerifyCommand(program, host);
    AddDiffCommand(program, host);
    AddDoctorCommand(program, host);
    AddCompletionCommand(program, host);
    AddManualCommand(program, host);
}

static int RunCommandLine(int argc, char** argv) {
    HOST host;
    CommandLine line(
        "jighost", "Runs the factory operations of TuneBench.t460 against a simulated camera.",
        VersionText());
    AddEverything(line.Program(), host);
    line.Run(argc, argv);
    return IsInterrupted() ? EXIT_INTERRUPTED : host.exitCode;
}

int main(int argc, char** argv) {
    try {
        return RunCommandLine(argc, argv);
    } catch (const HostError& e) {
        return Complain(e.what(), e.exitCode);
    } catch (const std::exception& e) {
        return Complain(PlainText(e.what()), EXIT_HOST_ERROR);
    }
}
