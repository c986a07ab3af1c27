// jighost sequence: the steps of a file, one after the other.
#include <algorithm>
#include <iostream>
#include <memory>

#include "jighost/commands/CommonOptions.h"
#include "jighost/output/Complaint.h"
#include "jighost/sequence/SequenceOfTrace.h"
#include "jighost/sequence/SequenceOutput.h"
#include "jighost/sequence/SequenceRecord.h"
#include "jighost/text/Numbers.h"
#include "platform/Program.h"

struct SEQUENCE_OPTIONS {
    std::optional<std::string> path;
    std::string from;   // number or name of a step; empty for the first one
    std::string until;  // the same; empty for the last one
    std::string recordPath;
    std::string tracePath;  // of the recording that a sequence is to be made of; or empty
};

static EXIT_CODE RunOrWrite(const HOST& host, const SEQUENCE_OPTIONS& options);

void AddSequenceCommand(Command& program, HOST& host) {
    Command command = program.AddCommand(
        "sequence", "Runs the steps of a file and holds each against what is expected of it");
    const auto pOptions = std::make_shared<SEQUENCE_OPTIONS>();
    command.AddOptionalArgument("file", pOptions->path, "The sequence");
    command.AddOption(
        "--from-trace", pOptions->tracePath,
        "Runs nothing: writes a sequence with the operations and records of this trace", "FILE");
    command.AddOption("--from", pOptions->from, "First step, by number or name", "STEP");
    command.AddOption("--until", pOptions->until, "Last step, by number or name", "STEP");
    command.AddOption(
        "--record", pOptions->recordPath, "Writes the run's record, as --json", "FILE");
    AddSessionOptions(command, host);
    AddTakeFolderOption(command, host);
    AddJsonOption(command, host);
    command.SetFooter(
        "Examples:\n"
        "  jighost sequence sequences/identity.yaml --body desk.yaml\n"
        "  jighost sequence sequences/inspection.yaml --from EnterFactoryMode --until 4\n"
        "  jighost sequence sequences/identity.yaml --record run.json\n"
        "  jighost sequence sequences/identity.yaml --trace identity.jsonl\n"
        "  jighost sequence sequences/identity.yaml --fault FA_CopyVistaUniqueID=0x2001\n"
        "  jighost sequence --from-trace recording.jsonl >line.yaml\n"
        "The file is checked before the first step runs; docs/bench.md shows its form. Ctrl-C "
        "ends\n"
        "the sequence behind the step that runs. The record is whole behind each step.\n"
        "What --from-trace writes goes to standard output. A failure of the trace is expected of\n"
        "its step; what else the steps came to is not. Exit code 5 tells that something is not "
        "in\n"
        "it as it was.");
    command.SetWork([&host, pOptions] { host.exitCode = RunOrWrite(host, *pOptions); });
}

// --- Which steps ---

/// The place of a step by number, or by name at or behind `start`.
static std::size_t FindStep(const SEQUENCE& sequence, const std::string& text, std::size_t start) {
    const auto number = ParseNumber<std::size_t>(text);
    if (number && *number >= 1 && *number <= sequence.steps.size()) {
        return *number - 1;
    }
    for (std::size_t i = start; i < sequence.steps.size(); ++i) {
        if (sequence.steps[i].name == text) {
            return i;
        }
    }
    throw HostError(
        EXIT_WRONG_USE, "expected a step by its name or by a number from 1 to " +
                            std::to_string(sequence.steps.size()) + ", got '" + text + "'");
}

static STEP_RANGE FindRange(const SEQUENCE& sequence, const SEQUENCE_OPTIONS& options) {
    STEP_RANGE range = {0, sequence.steps.size() - 1};
    if (!options.from.empty()) {
        range.first = FindStep(sequence, options.from, 0);
    }
    if (!options.until.empty()) {
        range.last = FindStep(sequence, options.until, range.first);
    }
    if (range.last < range.first) {
        throw HostError(
            EXIT_WRONG_USE, "step " + options.until + " comes ahead of step " + options.from);
    }
    return range;
}

// --- The run ---

static SESSION_OPTIONS SessionOptions(
    const HOST& host, const SEQUENCE_OPTIONS& options, const SEQUENCE& sequence,
    const STEP_RANGE& range) {
    SESSION_OPTIONS session = host.session;
    const auto first = sequence.steps.begin() + static_cast<std::ptrdiff_t>(range.first);
    const auto end = sequence.steps.begin() + static_cast<std::ptrdiff_t>(range.last) + 1;
    const auto isDump = [](const STEP& step) { return IsDump(*step.info); };
    if (std::any_of(first, end, isDump) ||
        std::any_of(sequence.always.begin(), sequence.always.end(), isDump)) {
        session.folderText = sequence.folderText;
    }
    session.inputs.push_back({"the sequence", *options.path});
    session.outputs.push_back({"--record", options.recordPath});
    return session;
}

static void Report(const HOST& host, const SEQUENCE_RUN& run, const SequenceRecord& record) {
    if (host.bJson) {
        std::cout << record.Text();
    } else {
        ShowSummary(run);
    }
    TellProblems(run);
}

// What lasts comes first: who reads the report may go away.
static EXIT_CODE RunFile(const HOST& host, const SEQUENCE_OPTIONS& options) {
    const SEQUENCE sequence = ReadSequence(*options.path);
    const STEP_RANGE range = FindRange(sequence, options);
    Session session(SessionOptions(host, options, sequence, range));
    RequireSteps(session, sequence);
    SequenceRecord record(options.recordPath, sequence);
    record.Begin();
    const bool bLive = IsErrorOutputTerminal() && !host.session.IsTraceShown();
    const SequenceOutput output(sequence, range, bLive, !host.bJson);
    const SEQUENCE_RUN run = RunSequence(
        session, sequence, range,
        [&](const SEQUENCE_RUN& before, const STEP_OUTCOME& outcome, bool bDone) {
            if (bDone) {
                record.Add(outcome, before.time);
            }
            output.OnStep(outcome, bDone);
        });
    const bool bSessionWritten = session.Finish();
    const bool bRecordWritten = DoOrComplain([&] { record.Finish(run); });
    Report(host, run, record);
    return session.Conclude(run.exitCode, bSessionWritten && bRecordWritten);
}

// --- What becomes of a trace ---

static EXIT_CODE WriteFromTrace(const std::string& path) {
    EXIT_CODE exitCode = EXIT_OK;
    WriteSequenceOfTrace(std::cout, path, [&exitCode](const std::string& text) {
        Complain(text);
        exitCode = EXIT_UNEXPECTED;
    });
    return exitCode;
}

static EXIT_CODE RunOrWrite(const HOST& host, const SEQUENCE_OPTIONS& options) {
    if (options.tracePath.empty() != options.path.has_value()) {
        throw HostError(EXIT_WRONG_USE, "expected a sequence's file, or --from-trace and no file");
    }
    if (options.path) {
        return RunFile(host, options);
    }
    if (!(options.from + options.until + options.recordPath).empty() || host.bJson) {
        throw HostError(EXIT_WRONG_USE, "--from-trace runs nothing: expected no other option");
    }
    return WriteFromTrace(options.tracePath);
}
