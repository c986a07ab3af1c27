// jighost trace: what a recording holds.
#include <iostream>
#include <memory>

#include "jighost/commands/CommonOptions.h"
#include "jighost/operations/OperationTable.h"
#include "jighost/recording/Moment.h"
#include "jighost/recording/TraceOutput.h"
#include "jighost/recording/WholeOperation.h"
#include "jighost/session/Interrupt.h"
#include "jighost/text/Numbers.h"

struct TRACE_OPTIONS {
    std::vector<std::string> paths;
    TRACE_SELECTION selection;
    std::string serial;
    std::string show;
};

/// Both are cut off anywhere: all moments of a day are before its end.
static void CheckOrder(const TRACE_SELECTION& selection) {
    const std::string& until = selection.until;
    if (!until.empty() && selection.since.substr(0, until.size()) > until) {
        throw HostError(
            EXIT_WRONG_USE,
            "--since " + selection.since + ": expected no later moment than --until " + until);
    }
}

static EXIT_CODE ReadTraces(const HOST& host, TRACE_OPTIONS options);

void AddTraceCommand(Command& program, HOST& host) {
    Command command =
        program.AddCommand("trace", "Tells what ran by recordings, and shows or compares it");
    const auto pOptions = std::make_shared<TRACE_OPTIONS>();
    command.AddRest("file", pOptions->paths, "Files of --trace or of the recorder", "FILE");
    command.AddFlag(
        "--failed", pOptions->selection.bFailed,
        "Lists operations alone that failed or never ended");
    command.AddOption(
        "--operation", pOptions->selection.operation,
        "Lists and counts runs of this operation alone", "NAME");
    command.AddOption(
        "--serial", pOptions->serial, "Lists and counts runs on the body of this serial number",
        "NUMBER");
    command.AddOption(
        "--since", pOptions->selection.since,
        "Lists and counts what began at this moment of the recording's clock, or later", "MOMENT");
    command.AddOption(
        "--until", pOptions->selection.until, "Lists and counts what began then, or earlier",
        "MOMENT");
    command.AddOption(
        "--show", pOptions->show, "Shows one operation in full, by its number", "NUMBER");
    AddJsonOption(command, host);
    command.SetFooter(
        "Examples:\n"
        "  jighost trace line/recordings/*.jsonl --failed\n"
        "  jighost trace recording.jsonl --operation GetBodyID --since 2026-11-22T21:06\n"
        "  jighost trace recording.jsonl --show 12\n"
        "  jighost trace diff good.jsonl bad.jsonl\n"
        "With --json each line is a document: the format, then each file and each operation, then\n"
        "the summary. With --show it has all bytes, which people see shortened.");
    command.SetWork([&host, pOptions] { host.exitCode = ReadTraces(host, *pOptions); });
    AddTraceDiffCommand(command, host);
}

// --- One operation ---

static void Show(const HOST& host, TraceReader& reader, std::uint32_t number) {
    std::chrono::minutes zone{};
    bool bFound = false;
    for (TRACE_ITEM item = reader.Next(); item != TRACE_ITEM::END && !IsInterrupted();
         item = reader.Next()) {
        if (item == TRACE_ITEM::NEW_FILE) {
            zone = ZoneOf(reader.Head().started);
        }
        if (item != TRACE_ITEM::OPERATION || reader.Operation().number != number) {
            continue;
        }
        const TRACED_OPERATION& operation = reader.Operation();
        bFound = true;
        if (host.bJson) {
            Json json = {{"format", JSON_FORMAT}};
            json.update(WholeOperationJson(operation));
            WriteJson(std::cout, json);
        } else {
            ShowOperation(
                std::cout, operation, operation.at ? MomentText(*operation.at, zone) : "");
        }
    }
    if (!bFound && !IsInterrupted()) {
        throw HostError(
            EXIT_WRONG_USE, "no operation " + std::to_string(number) + " in " + reader.Path());
    }
}

// --- The list ---

static void List(const HOST& host, TraceReader& reader, const TRACE_SELECTION& selection) {
    TraceOutput output(selection, host.bJson);
    for (TRACE_ITEM item = reader.Next(); item != TRACE_ITEM::END && !IsInterrupted();
         item = reader.Next()) {
        if (item == TRACE_ITEM::OPERATION) {
            output.Add(reader, reader.Operation());
        } else if (item == TRACE_ITEM::GAP) {
            output.AddGap(reader.Gap());
        } else {
            output.BeginFile(reader);
        }
    }
    if (!selection.operation.empty() && output.Count() == 0) {
        KnownOperation(selection.operation);
    }
    output.End(reader);
}

template <class Number>
static std::optional<Number> OptionNumber(const std::string& option, const std::string& text) {
    const auto number = ParseNumber<Number>(text);
    if (!number && !text.empty()) {
        throw HostError(EXIT_WRONG_USE, option + ": expected a number, got '" + text + "'");
    }
    return number;
}

static EXIT_CODE ReadTraces(const HOST& host, TRACE_OPTIONS options) {
    CatchInterrupts();
    TRACE_SELECTION& selection = options.selection;
    selection.serial = OptionNumber<std::uint32_t>("--serial", options.serial);
    const auto shown = OptionNumber<std::uint32_t>("--show", options.show);
    for (const auto& [option, pText] :
         {std::pair("--since", &selection.since), std::pair("--until", &selection.until)}) {
        *pText = pText->empty() ? "" : ParseMoment(option, *pText);
    }
    CheckOrder(selection);
    if (options.paths.empty()) {
        throw HostError(EXIT_WRONG_USE, "expected a file of --trace or of the recorder, got none");
    }
    try {
        TraceReader reader(
            options.paths, [&](const auto& operation) { return operation.number == shown; });
        if (shown) {
            Show(host, reader, *shown);
        } else {
            List(host, reader, selection);
        }
    } catch (const TraceError& e) {
        throw HostError(EXIT_WRONG_USE, e.what());
    }
    return IsInterrupted() ? EXIT_INTERRUPTED : EXIT_OK;
}
