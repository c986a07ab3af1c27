// The commands of jighost: one source file for each, which adds its subcommand and its options.
#pragma once

#include "jighost/session/SessionOptions.h"
#include "jighost/text/HostError.h"

namespace CLI {
class App;
}

/// What all commands share.
struct HOST {
    SESSION_OPTIONS session;
    bool bJson = false;            ///< from --json: the data as JSON
    EXIT_CODE exitCode = EXIT_OK;  ///< left by the command that ran; one that throws sets none
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
