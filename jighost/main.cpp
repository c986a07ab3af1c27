// jighost: runs the module's operations from the command line.
#include <exception>

#include "jighost/commands/Commands.h"
#include "jighost/help/Version.h"
#include "jighost/output/Complaint.h"
#include "jighost/output/Output.h"
#include "jighost/session/Interrupt.h"
#include "platform/Program.h"

static const char EXIT_CODES[] =
    "Exit codes: 0 all as expected, 1 the host itself failed, 2 wrong use, 3 the module or\n"
    "the camera link can't be loaded, 4 an operation failed, 5 an expectation is not met,\n"
    "130 interrupted by Ctrl-C, or 128 and the number of another signal.\n"
    "Data goes to standard output, talk to standard error. The module writes its log, JigDll.log,\n"
    "to the current directory.";

static void AddEverything(Command program, HOST& host) {
    program.SetFooter(EXIT_CODES);
    AddListCommand(program, host);
    AddRunCommand(program, host);
    AddDumpCommand(program, host);
    AddSequenceCommand(program, host);
    AddReportCommand(program, host);
    AddTraceCommand(program, host);
    AddReplayCommand(program, host);
    AddBodyCommand(program, host);
    AddDocsCommand(program, host);
    AddLogCommand(program, host);
    AddVerifyCommand(program, host);
    AddDiffCommand(program, host);
    AddDoctorCommand(program, host);
    AddRecorderCommand(program, host);
    if constexpr (!IS_WINDOWS) {  // which lacks the library of databases
        AddHistoryCommand(program, host);
    }
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
    return host.exitCode;
}

static int RunAndComplain(int argc, char** argv) {
    try {
        return RunCommandLine(argc, argv);
    } catch (const HostError& e) {
        Complain(e);
        return e.exitCode;
    } catch (const std::exception& e) {
        Complain(e.what());
        return EXIT_HOST_ERROR;
    }
}

int main(int argc, char** argv) {
    Output output;
    const int exitCode = RunAndComplain(argc, argv);
    return output.Finish(IsInterrupted() ? InterruptExitCode() : exitCode);
}
