// jighost sequence: the steps of a file, one after the other.
#include <cstdlib>
#include <iostream>
#include <memory>
#include <set>

#include "jighost/commands/CommonOptions.h"
#include "jighost/output/Complaint.h"
#include "jighost/report/RunReports.h"
#include "jighost/sequence/FilledText.h"
#include "jighost/sequence/GivenValues.h"
#include "jighost/sequence/Mistakes.h"
#include "jighost/sequence/RecordHead.h"
#include "jighost/sequence/RecordedBody.h"
#include "jighost/sequence/SequenceOfTrace.h"
#include "jighost/sequence/SequenceOutput.h"
#include "jighost/sequence/SequenceRecord.h"
#include "jighost/sequence/StepAnswers.h"
#include "jighost/session/Interrupt.h"
#include "jighost/session/Question.h"
#include "platform/Program.h"
#include "platform/StandardFiles.h"
#include "platform/Utf8Path.h"
#include "platform/WholeFile.h"

struct SEQUENCE_OPTIONS {
    std::optional<std::string> path;
    std::string from;   // number or name of a step; empty for the first one
    std::string until;  // the same; empty for the last one
    RECORD_PLACE record;
    RUN_PLACE place;
    REPORT_PATHS reports;
    std::string tracePath;  // of the recording that a sequence is to be made of; or empty
    GIVEN_VALUES given;
    std::string answersPath;
    bool bCheck = false;
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
    command.AddRepeatedOption(
        "--set", pOptions->given.settings, "The value of a parameter", "NAME=VALUE");
    command.AddOption(
        "--table", pOptions->given.tablePath,
        "Values of parameters, comma-separated with a line of names: one run for each row", "FILE");
    command.AddOption(
        "--answers", pOptions->answersPath,
        "Answers to steps that ask, comma-separated with the columns step and answer", "FILE");
    command.AddOption(
        "--record", pOptions->record.path, "Writes the run's record, as --json", "FILE");
    command.AddOption(
        "--records", pOptions->record.folder,
        "Writes it into a new file, named by date, serial number and outcome", "FOLDER");
    command.AddOption(
        "--report", pOptions->reports.page, "Writes a page of the run, as `jighost report`",
        "FILE");
    command.AddOption(
        "--junit", pOptions->reports.results,
        "Writes the steps as test results for a build server, in JUnit's XML", "FILE");
    command.AddOption(
        "--station", pOptions->place.station, "For the record; else the machine's name", "NAME");
    command.AddOption(
        "--operator", pOptions->place.operatorName, "For the record; else the user's name", "NAME");
    command.AddFlag(
        "--check", pOptions->bCheck, "Checks the file and the values, and runs nothing");
    AddSessionOptions(command, host);
    AddTakeFolderOption(command, host);
    AddJsonOption(command, host);
    command.SetFooter(
        "Examples:\n"
        "  jighost sequence sequences/identity.yaml --set serial=12345 --body desk.yaml\n"
        "  jighost sequence sequences/inspection.yaml --from EnterFactoryMode --until 4\n"
        "  jighost sequence sequences/inspection.yaml --record run.json\n"
        "  jighost sequence sequences/inspection.yaml --records records --station 'line 4'\n"
        "  jighost sequence --check sequences/inspection.yaml\n"
        "  jighost sequence sequences/identity.yaml --table lot.csv --record 'run-${serial}.json'\n"
        "  jighost sequence sequences/inspection.yaml --trace inspection.jsonl\n"
        "  jighost sequence sequences/inspection.yaml --fault EnterFactoryMode:1=0x2001\n"
        "  jighost sequence --from-trace recording.jsonl >line.yaml\n"
        "The file is checked before the first step runs; docs/bench.md shows its form. Ctrl-C "
        "ends\n"
        "the sequence behind the step that runs. A record reads the body's ID, and has each step\n"
        "as soon as it has ended.\n"
        "What --from-trace writes goes to standard output. A failure of the trace is expected of\n"
        "its step; what else the steps came to is not. Exit code 5 tells that something is not "
        "in\n"
        "it as it was.");
    command.SetWork([&host, pOptions] { host.exitCode = RunOrWrite(host, *pOptions); });
}

// --- What is to run ---

/// One run of the sequence, with its files.
struct PLANNED_RUN {
    RUN_VALUES values;
    RECORD_PLACE record;
    REPORT_PATHS reports;
    std::string tracePath;
};

/// Asks until the answer is a value; nothing where nobody sits at a terminal or answers.
static std::optional<std::string> AskValue(const PARAMETER& parameter) {
    const std::string& question = parameter.question;
    while (CanAsk()) {
        auto value = Ask(question.empty() ? parameter.name + '?' : question);
        if (!value || DoOrComplain([&] { CheckValue(parameter, *value); })) {
            return value;
        }
    }
    return std::nullopt;
}

static std::optional<std::string> AskNobody(const PARAMETER&) {
    return std::nullopt;
}

static PLANNED_RUN Plan(
    const HOST& host, const SEQUENCE_OPTIONS& options, const RUN_VALUES& values) {
    const auto path = [&](const std::string& text) {
        return PathWithValues(text, values.values).value_or("");
    };
    return {
        values,
        {path(options.record.path), options.record.folder},
        {path(options.reports.page), path(options.reports.results)},
        path(host.session.tracePath),
    };
}

/// Throws EXIT_WRONG_USE if a run would replace the file of another one.
static void CheckOwnFile(
    const std::set<std::string>& paths, const std::string& path, const std::string& option) {
    if (!path.empty() && paths.contains(path)) {
        throw HostError(
            EXIT_WRONG_USE, option + ' ' + path +
                                ": expected a file of its own for each row of "
                                "--table, by ${NAME} of a parameter in the path");
    }
}

/// Ahead of whatever may keep a run from its end: a build server would read the former one's.
static void ReplaceFormer(const SEQUENCE_OPTIONS& options, const REPORT_PATHS& reports) {
    if (options.path && !options.bCheck) {
        ReplaceFormerReports(reports, RecordWithoutEnd(*options.path, options.place));
    }
}

/// Takes the files of this run to those of the runs before.
static void CheckOwnFiles(std::set<std::string>& paths, const PLANNED_RUN& planned) {
    CheckOwnFile(paths, planned.record.path, "--record");
    CheckOwnFile(paths, planned.reports.page, "--report");
    CheckOwnFile(paths, planned.reports.results, "--junit");
    CheckOwnFile(paths, planned.tracePath, "--trace");
    paths.insert(
        {planned.record.path, planned.reports.page, planned.reports.results, planned.tracePath});
}

/// A pipe that nobody reads would keep the run from its end, also from one by a signal.
static void CheckNoDevice(const std::string& option, const std::string& path) {
    if (!path.empty() && IsDeviceOrPipe(PathOf(path))) {
        throw HostError(
            EXIT_WRONG_USE, option + ' ' + path + ": expected a file, got a device or a pipe");
    }
}

static void CheckWritable(const PLANNED_RUN& planned) {
    CheckNoDevice("--record", planned.record.path);
    CheckNoDevice("--report", planned.reports.page);
    CheckNoDevice("--junit", planned.reports.results);
    const RecordFile check(planned.record);
    CheckReportsWritable(planned.reports);
}

/// All of it is checked ahead of the first step.
static std::vector<PLANNED_RUN> PlanRuns(
    const HOST& host, const SEQUENCE_OPTIONS& options, const SequenceFile& file,
    const ValueAsker& ask) {
    const StepAnswers answers(options.answersPath);
    std::vector<PLANNED_RUN> runs;
    std::set<std::string> paths;
    Mistakes mistakes;
    for (const RUN_VALUES& values : CollectValues(file.Parameters(), options.given, ask)) {
        const auto plan = [&] {
            runs.push_back(Plan(host, options, values));
            ReplaceFormer(options, runs.back().reports);
            const SEQUENCE sequence = file.Read(values.values);
            const STEP_RANGE range = FindRange(sequence, options.from, options.until);
            if (!options.bCheck || !options.answersPath.empty()) {
                answers.Check(sequence, range);
            }
            CheckOwnFiles(paths, runs.back());
            if (!options.bCheck) {
                CheckWritable(runs.back());
            }
        };
        mistakes.Gather(plan, values.place.empty() ? "" : " (" + values.place + ')');
    }
    mistakes.ThrowIfAny();
    return runs;
}

/// Without values nothing is planned: who checks a file need not have any.
static EXIT_CODE CheckSequence(const HOST& host, const SEQUENCE_OPTIONS& options) {
    const SequenceFile file(*options.path);
    std::string unknown;
    if (options.given.settings.empty() && options.given.tablePath.empty()) {
        for (const auto& [name, value] : DefaultValues(file.Parameters())) {
            unknown += value ? "" : (unknown.empty() ? "" : ", ") + name;
        }
    }
    if (unknown.empty()) {
        PlanRuns(host, options, file, AskNobody);
    }
    std::cout << PlainText(*options.path) << ": nothing wrong found"
              << (unknown.empty() ? "" : "; not checked without values: what depends on " + unknown)
              << '\n';
    return EXIT_OK;
}

// --- The run ---

static SESSION_OPTIONS SessionOptions(
    const HOST& host, const SEQUENCE_OPTIONS& options, const SEQUENCE& sequence,
    const STEP_RANGE& range, const PLANNED_RUN& planned) {
    SESSION_OPTIONS session = host.session;
    if (HasDump(sequence, range)) {
        session.folderText = sequence.folderText;
    }
    session.tracePath = planned.tracePath;
    for (const RECORDED_FILE& file : sequence.files) {
        session.inputs.push_back({"the sequence", file.path});
    }
    session.inputs.push_back({"--answers", options.answersPath});
    session.inputs.push_back({"--table", options.given.tablePath});
    session.outputs.push_back({"--record", planned.record.path});
    session.outputs.push_back({"--report", planned.reports.page});
    session.outputs.push_back({"--junit", planned.reports.results});
    return session;
}

/// Whether anybody is to read it.
static bool IsRecordWanted(const HOST& host, const SEQUENCE_OPTIONS& options) {
    return host.bJson || !options.record.path.empty() || !options.record.folder.empty() ||
           !options.reports.IsEmpty();
}

/// Ends the program in the midst of an operation: what it has of the run lasts, the body's file is
/// as it was. Standard streams belong to the other thread.
[[noreturn]] static void EndInOperation(
    const HOST& host, const SEQUENCE_OPTIONS& options, const Session& session,
    const SEQUENCE& sequence, const PLANNED_RUN& planned, SequenceRecord& record,
    const STEP_OUTCOME& outcome) {
    EXIT_CODE exitCode = outcome.exitCode;
    std::string talk = "jighost: step " + std::to_string(outcome.number) + ", " +
                       PlainText(outcome.step->name + ": " + outcome.problem) +
                       (sequence.always.empty() ? "" : "; no step of always: has run") +
                       (options.given.tablePath.empty() ? "" : "; no further row is run") + '\n';
    const auto doOrTell = [&](const auto& work) {
        try {
            work();
        } catch (const HostError& e) {
            exitCode = EXIT_HOST_ERROR;
            talk += std::string("jighost: ") + e.what() + '\n';
        }
    };
    for (const std::string& fault : session.FaultsNotMet()) {
        talk += "jighost: " + PlainText(NotMetText(fault)) + '\n';
    }
    record.Add(outcome);
    ForgetBody(record.Record());
    doOrTell([&] { record.Finish(outcome.exitCode); });
    doOrTell([&] { WriteRunPage(planned.reports, record.Record()); });
    doOrTell([&] { WriteRunResults(planned.reports, record.Record()); });
    WriteStandardFile(STANDARD_ERROR, talk);
    if (host.bJson && WriteStandardFile(STANDARD_OUTPUT, RunRecordText(record.Record())) != 0) {
        exitCode = EXIT_HOST_ERROR;
    }
    std::_Exit(exitCode);
}

static void Report(const HOST& host, const SEQUENCE& sequence, const RUN_RECORD& record) {
    if (host.bJson) {
        std::cout << RunRecordText(record);
    } else {
        ShowSummary(sequence, record);
    }
    TellProblems(record);
}

/// Runs the steps, and tells of each as soon as it has ended.
static EXIT_CODE RunSteps(
    const HOST& host, const SEQUENCE_OPTIONS& options, Session& session, const SEQUENCE& sequence,
    const STEP_RANGE& range, const PLANNED_RUN& planned, SequenceRecord& record) {
    const bool bLive = IsErrorOutputTerminal() && !host.session.IsTraceShown();
    const SequenceOutput output(sequence, range, bLive, !host.bJson);
    const StepAnswers answers(options.answersPath);
    const RUN_PARTNERS partners = {
        .watcher =
            [&](const STEP_OUTCOME& outcome, bool bDone) {
                if (bDone) {
                    record.Add(outcome);
                }
                output.OnStep(outcome, bDone);
            },
        .timeOver =
            [&](const STEP_OUTCOME& outcome) {
                EndInOperation(host, options, session, sequence, planned, record, outcome);
            },
        .ask = [&](const STEP& step) { return answers.AnswerTo(step); },
        .bRecorded = IsRecordWanted(host, options),
    };
    return RunSequence(session, sequence, range, partners);
}

// What lasts comes first: who reads the report may go away.
static EXIT_CODE RunOnce(
    const HOST& host, const SEQUENCE_OPTIONS& options, const SEQUENCE& sequence,
    const PLANNED_RUN& planned) {
    const STEP_RANGE range = FindRange(sequence, options.from, options.until);
    const SESSION_OPTIONS ofSession = SessionOptions(host, options, sequence, range, planned);
    Session session(ofSession);
    RequireSteps(session, sequence);
    SequenceRecord record(planned.record);
    RUN_RECORD head = RecordHead(sequence, range);
    if (IsRecordWanted(host, options)) {
        CompleteHead(head, session, ofSession, options.place);
    }
    record.Begin(std::move(head));
    EXIT_CODE exitCode = RunSteps(host, options, session, sequence, range, planned, record);
    if (IsRecordWanted(host, options)) {
        ReadBodyAgain(session, record.Record());
    }
    const bool bSessionWritten = session.Finish();
    exitCode = session.Conclude(exitCode, bSessionWritten || exitCode == EXIT_INTERRUPTED);
    const bool bRecordWritten = DoOrComplain([&] { record.Finish(exitCode); });
    const bool bPageWritten = DoOrComplain([&] { WriteRunPage(planned.reports, record.Record()); });
    const bool bResultsWritten =
        DoOrComplain([&] { WriteRunResults(planned.reports, record.Record()); });
    Report(host, sequence, record.Record());
    return session.Conclude(
        exitCode, bSessionWritten && bRecordWritten && bPageWritten && bResultsWritten);
}

/// A run that can't begin ends those behind it too.
static EXIT_CODE RunOrComplain(
    const HOST& host, const SEQUENCE_OPTIONS& options, const SEQUENCE& sequence,
    const PLANNED_RUN& planned, bool& bBegun) {
    EXIT_CODE exitCode = EXIT_HOST_ERROR;
    try {
        exitCode = RunOnce(host, options, sequence, planned);
    } catch (const HostError& e) {
        Complain(e);
        bBegun = false;
        exitCode = e.exitCode;
    }
    return exitCode;
}

static EXIT_CODE RunFile(const HOST& host, const SEQUENCE_OPTIONS& options) {
    const SequenceFile file(*options.path);
    EXIT_CODE exitCode = EXIT_OK;
    bool bBegun = true;
    for (const PLANNED_RUN& planned : PlanRuns(host, options, file, AskValue)) {
        const std::string& place = planned.values.place;
        if (IsInterrupted() || !bBegun) {
            Complain("not run: " + place);
            continue;
        }
        const SEQUENCE sequence = file.Read(planned.values.values);
        if (!host.bJson && !place.empty()) {
            ShowValues(place, sequence);
        }
        const EXIT_CODE ofRun = RunOrComplain(host, options, sequence, planned, bBegun);
        exitCode = exitCode == EXIT_OK ? ofRun : exitCode;
    }
    return exitCode;
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
    ReplaceFormer(options, options.reports);  // as far as their paths are known without values
    if (options.tracePath.empty() != options.path.has_value()) {
        throw HostError(EXIT_WRONG_USE, "expected a sequence's file, or --from-trace and no file");
    }
    if (!options.record.path.empty() && !options.record.folder.empty()) {
        throw HostError(EXIT_WRONG_USE, "expected --record or --records, and not both");
    }
    if (options.path) {
        return options.bCheck ? CheckSequence(host, options) : RunFile(host, options);
    }
    const std::string texts =
        options.from + options.until + options.record.path + options.record.folder +
        options.place.station + options.place.operatorName + options.reports.page +
        options.reports.results + options.given.tablePath + options.answersPath;
    if (!texts.empty() || !options.given.settings.empty() || options.bCheck || host.bJson) {
        throw HostError(EXIT_WRONG_USE, "--from-trace runs nothing: expected no other option");
    }
    return WriteFromTrace(options.tracePath);
}
