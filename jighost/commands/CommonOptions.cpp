// The options' words, and what is wrong use of them.
#include "jighost/commands/CommonOptions.h"

#include <CLI/CLI.hpp>

#include "jighost/session/Fault.h"

void AddModuleOption(CLI::App& command, HOST& host) {
    command
        .add_option(
            "--module", host.session.modulePath, "The module's file; else the one beside jighost")
        ->type_name("PATH");
}

/// A --trace without its file takes a field that stands behind it for one.
static std::string CheckTracePath(const std::string& path) {
    return path.find('=') == std::string::npos
               ? ""
               : "expected a file, got '" + path +
                     "'; a --trace without a file goes behind the fields";
}

static void AddTraceOption(CLI::App& command, HOST& host) {
    const auto take = [&host](const std::vector<std::string>& values) {
        host.session.bTrace = true;
        host.session.tracePath = values.front();
        return true;
    };
    command
        .add_option(
            "--trace", take,
            "Every link call with its bytes, beside the log: into a file for replay, or to "
            "standard error")
        ->type_name("FILE")
        ->check(CheckTracePath)
        ->expected(0, 1);
}

static void AddFaultOption(CLI::App& command, HOST& host) {
    command
        .add_option(
            "--fault", host.session.faults,
            std::string("Makes link calls fail with a code, or answer a word: ") + FAULT_FORMS)
        ->type_name("FAULT")
        ->allow_extra_args(false);
}

void AddSessionOptions(CLI::App& command, HOST& host) {
    AddModuleOption(command, host);
    command
        .add_option(
            "--body", host.session.bodyPath,
            "The body's saved values: read at the start, written back at the end")
        ->type_name("FILE");
    AddTraceOption(command, host);
    AddFaultOption(command, host);
}

void AddJsonOption(CLI::App& command, HOST& host) {
    command.add_flag("--json", host.bJson, "Gives the data as JSON");
}
