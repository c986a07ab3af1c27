// The commands of jighost: one source file for each, which adds its subcommand and its options.
#pragma once

#include "jighost/commands/Command.h"
#include "jighost/session/SessionOptions.h"
#include "jighost/text/HostError.h"

/// What all commands share.
struct HOST {
    SESSION_OPTIONS session;
    bool bJson = false;            ///< from --json: the data as JSON
    EXIT_CODE exitCode = EXIT_OK;  ///< left by the command that ran; one that throws sets none
};

void AddListCommand(Command& program, HOST& host);
void AddRunCommand(Command& program, HOST& host);
void AddDumpCommand(Command& program, HOST& host);
void AddSequenceCommand(Command& program, HOST& host);
void AddReportCommand(Command& program, HOST& host);
void AddTraceCommand(Command& program, HOST& host);
void AddTraceDiffCommand(Command& trace, HOST& host);
void AddReplayCommand(Command& program, HOST& host);
void AddBodyCommand(Command& program, HOST& host);
void AddDocsCommand(Command& program, HOST& host);
void AddLogCommand(Command& program, HOST& host);
void AddVerifyCommand(Command& program, HOST& host);
void AddDiffCommand(Command& program, HOST& host);
void AddDoctorCommand(Command& program, HOST& host);
void AddRecorderCommand(Command& program, HOST& host);
void AddHistoryCommand(Command& program, HOST& host);
void AddCompletionCommand(Command& program, HOST& host);
void AddManualCommand(Command& program, HOST& host);
