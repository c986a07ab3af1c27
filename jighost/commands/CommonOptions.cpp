// The options' words, and what is wrong use of them.
#include "jighost/commands/CommonOptions.h"

#include "jighost/session/Fault.h"

void AddModuleOption(Command& command, HOST& host) {
    command.AddOption(
        "--module", host.session.modulePath, "The module's file; else jighost's own", "PATH");
}

/// A --trace without its file takes a field that stands behind it for one.
static std::string CheckTracePath(const std::string& path) {
    return path.find('=') == std::string::npos
               ? ""
               : "expected a file, got '" + path +
                     "'; a --trace without a file goes behind the fields";
}

static void AddTraceOption(Command& command, HOST& host) {
    const auto take = [&host](const std::string& path) {
        host.session.bTrace = true;
        host.session.tracePath = path;
    };
    command.AddOpenOption(
        "--trace", take,
        "Every link call with its bytes, beside the log: into a file for replay, or to standard "
        "error",
        "FILE", CheckTracePath);
}

static void AddFaultOption(Command& command, HOST& host) {
    command.AddRepeatedOption(
        "--fault", host.session.faults,
        std::string("Makes link calls fail with a code, or answer a word: ") + FAULT_FORMS,
        "FAULT");
}

void AddLinkOption(Command& command, HOST& host) {
    command.AddOption(
        "--link", host.session.linkPath,
        "A camera link's file: the module works with it in place of the simulated body", "PATH");
}

void AddSessionOptions(Command& command, HOST& host) {
    AddModuleOption(command, host);
    AddLinkOption(command, host);
    command.AddOption(
        "--body", host.session.bodyPath,
        "The body's saved values: read at the start, written back at the end", "FILE");
    AddTraceOption(command, host);
    AddFaultOption(command, host);
}

void AddTakeFolderOption(Command& command, HOST& host) {
    command.AddFlag(
        "--take-folder", host.session.bTakeFolder,
        "Replaces the folder of another process that holds SHARED_NAME_FOLDER, for this run");
}

void AddJsonOption(Command& command, HOST& host) {
    command.AddFlag("--json", host.bJson, "Gives the data as JSON");
}
