#include "jighost/CommonOptions.h"

#include <CLI/CLI.hpp>

void AddModuleOption(CLI::App& command, HOST& host) {
    command
        .add_option("--module", host.modulePath, "The module's file; else the one beside jighost")
        ->type_name("PATH");
}

void AddSessionOptions(CLI::App& command, HOST& host) {
    AddModuleOption(command, host);
    command
        .add_option(
            "--body", host.bodyPath,
            "The body's saved values: read at the start, written back at the end")
        ->type_name("FILE");
}

void AddJsonOption(CLI::App& command, HOST& host) {
    command.add_flag("--json", host.bJson, "Gives the data as JSON");
}
