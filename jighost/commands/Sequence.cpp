// jighost sequence: the steps of a file, one after the other.
#include <algorithm>
#include <iomanip>
#include <iostream>
#include <memory>

#include "jighost/commands/CommonOptions.h"
#include "jighost/operations/ResultName.h"
#include "jighost/output/Colour.h"
#include "jighost/sequence/SequenceRun.h"
#include "jighost/text/Numbers.h"
#include "platform/Program.h"
#include "platform/WholeFile.h"

struct SEQUENCE_OPTIONS {
    std::string path;
    std::string from;   // number or name of a step; empty for the first one
    std::string until;  // the same; empty for the last one
    std::string recordPath;
};

static EXIT_CODE RunFile(const HOST& host, const SEQUENCE_OPTIONS& options);

void AddSequenceCommand(Command& program, HOST& host) {
    Command command = program.AddCommand(
        "sequence", "Runs the steps of a file and holds each against what is expected of it");
    const auto pOptions = std::make_shared<SEQUENCE_OPTIONS>();
    command.AddArgument("file", pOptions->path, "The sequence");
    command.AddOption("--from", pOptions->from, "First step, by number or name", "STEP");
    command.AddOption("--until", pOptions->until, "Last step, by number or name", "STEP");
    command.AddOption(
        "--record", pOptions->recordPath, "Writes the run's record, as --json", "FILE");
    AddSessionOptions(command, host);
    AddJsonOption(command, host);
    command.SetFooter(
        "Examples:\n"
        "  jighost sequence sequences/identity.yaml --body desk.yaml\n"
        "  jighost sequence sequences/inspection.yaml --from EnterFactoryMode --until 4\n"
        "  jighost sequence sequences/identity.yaml --record run.json\n"
        "  jighost sequence sequences/identity.yaml --trace identity.jsonl\n"
        "  jighost sequence sequences/identity.yaml --fault FA_CopyVistaUniqueID=0x2001\n"
        "The file is checked before the first step runs; docs/bench.md shows its form. Ctrl-C "
        "ends\n"
        "the sequence behind the step that runs.");
    command.SetWork([&host, pOptions] { host.exitCode = RunFile(host, *pOptions); });
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

// --- What people see ---

static std::string TimeText(std::chrono::duration<double, std::milli> time) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(1) << time.count() << " ms";
    return text.str();
}

/// A line for each step while it runs.
static void ShowLive(const SEQUENCE& sequence, const STEP_OUTCOME& outcome, bool bDone) {
    if (!bDone) {
        std::cerr << '[' << outcome.number << '/' << sequence.steps.size() << "] "
                  << outcome.step->name << std::flush;
        return;
    }
    std::cerr << ' ' << TimeText(outcome.run.time)
              << (outcome.problem.empty() ? "" : ", not as expected") << '\n';
}

static std::string ResultColumn(const STEP_OUTCOME& outcome) {
    std::string text = ResultText(outcome.run.result);
    if (outcome.attempts > 1) {
        text += ", attempt " + std::to_string(outcome.attempts);
    }
    return text;
}

static void ShowTable(const SEQUENCE_RUN& run) {
    std::size_t nameWidth = 0;
    std::size_t resultWidth = 0;
    for (const STEP_OUTCOME& outcome : run.outcomes) {
        nameWidth = std::max(nameWidth, outcome.step->name.size());
        resultWidth = std::max(resultWidth, ResultColumn(outcome).size());
    }
    for (const STEP_OUTCOME& outcome : run.outcomes) {
        std::ostringstream result;
        result << std::left << std::setw(static_cast<int>(resultWidth)) << ResultColumn(outcome);
        std::cout << std::right << std::setw(3) << outcome.number << "  " << std::left
                  << std::setw(static_cast<int>(nameWidth)) << outcome.step->name << "  "
                  << Coloured(result.str(), outcome.problem.empty() ? COLOUR::GREEN : COLOUR::RED)
                  << std::right << std::setw(11) << TimeText(outcome.run.time) << '\n';
    }
}

static void ShowSummary(const SEQUENCE_RUN& run) {
    const auto problems = std::count_if(
        run.outcomes.begin(), run.outcomes.end(),
        [](const STEP_OUTCOME& outcome) { return !outcome.problem.empty(); });
    std::cout << run.sequence->name << (run.sequence->name.empty() ? "" : ": ")
              << run.outcomes.size() << " of " << run.sequence->steps.size() << " steps run, "
              << problems << " not as expected, " << TimeText(run.time) << '\n';
}

static void TellProblems(const SEQUENCE_RUN& run) {
    for (const STEP_OUTCOME& outcome : run.outcomes) {
        if (!outcome.problem.empty()) {
            std::cerr << "jighost: step " << outcome.number << ", " << outcome.step->name << ": "
                      << outcome.problem << '\n';
        }
    }
    if (run.exitCode == EXIT_INTERRUPTED) {
        std::cerr << "jighost: interrupted behind step "
                  << (run.outcomes.empty() ? 0 : run.outcomes.back().number) << '\n';
    }
}

/// Ahead of the run: a record that can't be written would be missed behind it.
static void CheckRecordPath(const std::string& path) {
    if (path.empty()) {
        return;
    }
    const std::filesystem::path folder = std::filesystem::absolute(path).parent_path();
    if (!std::filesystem::is_directory(folder)) {
        throw HostError(EXIT_WRONG_USE, "there is no folder " + folder.string());
    }
}

static void WriteRecord(const std::string& path, const SEQUENCE_RUN& run) {
    try {
        ReplaceFile(path, JsonText(SequenceJson(run)) + '\n');
    } catch (const std::filesystem::filesystem_error& e) {
        throw HostError(EXIT_HOST_ERROR, e.what());
    }
}

static void Report(const HOST& host, const SEQUENCE_RUN& run) {
    if (host.bJson) {
        WriteJson(std::cout, SequenceJson(run));
    } else {
        ShowTable(run);
        ShowSummary(run);
    }
    std::cout << std::flush;
    TellProblems(run);
}

static EXIT_CODE RunFile(const HOST& host, const SEQUENCE_OPTIONS& options) {
    const SEQUENCE sequence = ReadSequence(options.path);
    const STEP_RANGE range = FindRange(sequence, options);
    CheckRecordPath(options.recordPath);
    Session session(host.session);
    if (!sequence.folderText.empty()) {
        session.HoldFolder(sequence.folderText);
    }
    const bool bLive = IsErrorOutputTerminal() && !host.session.IsTraceShown();
    const SEQUENCE_RUN run =
        RunSequence(session, sequence, range, [&](const STEP_OUTCOME& outcome, bool bDone) {
            if (bLive) {
                ShowLive(sequence, outcome, bDone);
            }
        });
    // First of all what lasts: who reads the report may go away.
    session.Finish();
    if (!options.recordPath.empty()) {
        WriteRecord(options.recordPath, run);
    }
    Report(host, run);
    return run.exitCode;
}
