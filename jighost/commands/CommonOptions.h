// The options that mean the same on every command that has them.
#pragma once

#include "jighost/commands/Commands.h"

/// --module, for a command that loads the module.
void AddModuleOption(Command& command, HOST& host);

/// --link, for a command that has a camera link other than the simulated body.
void AddLinkOption(Command& command, HOST& host);

/// All that a Session is set up by, for a command that runs operations; --module among it.
void AddSessionOptions(Command& command, HOST& host);

/// --take-folder, for a command that has dumps go to a folder of its own.
void AddTakeFolderOption(Command& command, HOST& host);

/// --json, for a command whose output is data.
void AddJsonOption(Command& command, HOST& host);
