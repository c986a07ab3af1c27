// The commands of jighost: one source file for each, which adds its subcommand and its options.
#pragma once

#include <string>
#include <vector>

#include "jighost/HostError.h"

namespace CLI {
class App;
}

/// What all commands share.
struct HOST {
    std::string modulePath;           ///< from --module; empty for the module beside this program
    std::string bodyPath;             ///< from --body; empty for a factory-new body
    bool bTrace = false;              ///< from --trace ...
    std::string tracePath;            ///< ... and its file; empty for standard error
    std::vector<std::string> faults;  ///< from --fault, as written
    bool bJson = false;               ///< from --json: the data as JSON
    EXIT_CODE exitCode = EXIT_OK;     ///< left by the command that ran; one that throws sets none

    /// Whether the trace goes where talk goes.
    bool IsTraceShown() const { return bTrace && tracePath.empty(); }
};

void AddListCommand(CLI::App& app, HOST& host);
void AddRunCommand(CLI::App& app, HOST& host);
void AddDumpCommand(CLI::App& app, HOST& host);
void AddSequenceCommand(CLI::App& app, HOST& host);
void AddReplayCommand(CLI::App& app, HOST& host);
void AddBodyCommand(CLI::App& app, HOST& host);
void AddDocsCommand(CLI::App& app, HOST& host);
void AddLogCommand(CLI::App& app, HOST& host);
void AddVerifyCommand(CLI::App& app, HOST& host);
void AddDiffCommand(CLI::App& app, HOST& host);
void AddDoctorCommand(CLI::App& app, HOST& host);
void AddCompletionCommand(CLI::App& app, HOST& host);
