// jighost history: what ran on many bodies, and what came of it.
#include "jighost/commands/History.h"

#include <iostream>
#include <memory>

#include "jighost/history/History.h"
#include "jighost/history/Import.h"
#include "jighost/output/Complaint.h"
#include "jighost/records/RunRecord.h"
#include "jighost/session/Interrupt.h"
#include "jighost/text/Numbers.h"
#include "jighost/text/PlainText.h"

void AddHistoryCommand(Command& program, HOST& host) {
    Command command =
        program.AddCommand("history", "Keeps the records of sequences' runs, and tells of them");
    command.RequireCommand();
    command.SetFooter(
        "Examples:\n"
        "  jighost history import records/*.json\n"
        "  jighost history list --serial 12345\n"
        "  jighost history stats --sequence adjust\n"
        "  jighost history list --database postgresql://line@server/history");
    AddHistoryImportCommand(command, host);
    AddHistoryListCommand(command, host);
    AddHistoryShowCommand(command, host);
    AddHistoryStatsCommand(command, host);
    AddHistoryCompareCommand(command, host);
    AddHistoryExportCommand(command);
}

// --- What they have in common ---

void AddDatabaseOption(Command& command, std::string& place) {
    command.AddOption(
        "--database", place,
        "The history: a file, or postgresql://NAME@HOST/DATABASE; else a file of the user's",
        "PLACE");
}

void FILTER_OPTIONS::AddTo(Command& command) {
    command.AddOption("--serial", serial, "Runs on this body alone", "NUMBER");
    command.AddOption("--since", since, "Runs from this day on, such as 2026-11-23", "DAY");
    command.AddOption("--until", until, "Runs up to this day", "DAY");
    command.AddOption("--station", station, "Runs at this station");
    command.AddOption("--sequence", sequence, "Runs of this sequence, by its name");
    command.AddOption(
        "--outcome", outcome, "Runs that were passed, failed, error, aborted or unfinished");
}

RUN_FILTER FILTER_OPTIONS::Filter() const {
    RUN_FILTER filter;
    filter.station = station;
    filter.sequence = sequence;
    filter.outcome = outcome;
    if (!serial.empty()) {
        filter.serial = ParseSerial("--serial", serial);
    }
    if (!since.empty()) {
        filter.since = ParseDay("--since", since);
    }
    if (!until.empty()) {
        filter.until = ParseDay("--until", until);
    }
    if (filter.since && filter.until && *filter.since > *filter.until) {
        throw HostError(
            EXIT_WRONG_USE, "--since " + since + ": expected no later day than --until " + until);
    }
    if (!outcome.empty() && !VerdictOfName(outcome)) {
        throw HostError(
            EXIT_WRONG_USE,
            "--outcome " + outcome + ": expected passed, failed, error, aborted or unfinished");
    }
    return filter;
}

std::uint32_t ParseSerial(const std::string& name, const std::string& text) {
    const auto number = ParseNumber<std::uint32_t>(text);
    if (!number) {
        throw HostError(EXIT_WRONG_USE, name + ' ' + text + ": expected a serial number");
    }
    return *number;
}

std::string Shown(const std::string& text) {
    return text.empty() ? "-" : PlainText(text);
}

std::string CountText(std::size_t count, const std::string& what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

// --- import ---

static EXIT_CODE Import(const std::string& place, const std::vector<std::string>& records) {
    if (records.empty()) {
        throw HostError(EXIT_WRONG_USE, "expected records to import");
    }
    CatchInterrupts();
    const auto pDatabase = OpenOrMakeHistory(place);
    const IMPORT_COUNTS counts =
        ImportRecords(*pDatabase, records, [](const std::string& text) { Complain(text); });
    std::cout << CountText(counts.imported, "record") << " imported, " << counts.known
              << " known before, " << counts.spoilt << " spoilt\n";
    const std::size_t left = records.size() - counts.imported - counts.known - counts.spoilt;
    if (left > 0) {
        Complain("interrupted: " + CountText(left, "file") + " not read");
    }
    return counts.spoilt == 0 ? EXIT_OK : EXIT_UNEXPECTED;
}

void AddHistoryImportCommand(Command& history, HOST& host) {
    Command command = history.AddCommand("import", "Takes records in, each of them once");
    struct OPTIONS {
        std::string place;
        std::vector<std::string> records;
    };
    const auto pOptions = std::make_shared<OPTIONS>();
    AddDatabaseOption(command, pOptions->place);
    command.AddRest(
        "records", pOptions->records, "Files that jighost sequence has written", "RECORD");
    command.SetFooter(
        "Example:\n"
        "  jighost history import records/*.json\n"
        "Ends with 5 if a record is spoilt; the others are imported. What ends it early leaves\n"
        "whole records: the same line once more imports the rest.");
    command.SetWork(
        [&host, pOptions] { host.exitCode = Import(pOptions->place, pOptions->records); });
}
