// jighost history compare, jighost history export: measurements of bodies side by side, and all of
// them for other programs.
#include <iomanip>
#include <iostream>
#include <memory>

#include "jighost/commands/CommonOptions.h"
#include "jighost/commands/History.h"
#include "jighost/history/Comparison.h"
#include "jighost/history/History.h"
#include "jighost/output/Json.h"
#include "jighost/text/Numbers.h"
#include "jighost/text/PlainText.h"

// --- compare ---

static std::string ValueShown(const std::optional<STORED_MEASUREMENT>& measurement) {
    if (!measurement) {
        return "-";
    }
    const std::string text =
        measurement->value ? NumberText(*measurement->value) : PlainText(measurement->text);
    return text + (measurement->bWithin ? "" : " failed");
}

static void ShowComparedRow(
    const std::string& step, const std::string& left, const std::string& right,
    const std::string& difference, const std::string& name) {
    std::cout << std::right << std::setw(6) << step << "  " << std::setw(16) << left << "  "
              << std::setw(16) << right << "  " << std::setw(16) << difference << "  " << name
              << '\n';
}

static void ShowComparedRuns(const COMPARED_RUNS& runs) {
    std::cout << Shown(runs.left.sequence) << '\n';
    for (const STORED_RUN* pRun : {&runs.left, &runs.right}) {
        std::cout << "  " << std::right << std::setw(10) << *pRun->serial << "  "
                  << Shown(pRun->outcome) << "  " << Shown(pRun->started) << "  "
                  << Shown(pRun->number) << '\n';
    }
    ShowComparedRow(
        "step", std::to_string(*runs.left.serial), std::to_string(*runs.right.serial), "difference",
        "measurement");
    for (const MEASURED_PAIR& pair : runs.measurements) {
        const STORED_MEASUREMENT& any = pair.Any();
        const auto difference = pair.Difference();
        ShowComparedRow(
            std::to_string(any.number), ValueShown(pair.left), ValueShown(pair.right),
            difference ? NumberText(*difference) : "-",
            Shown(any.name) + (any.unit.empty() ? "" : ", " + Shown(any.unit)));
    }
}

static Json ValueJson(const std::optional<STORED_MEASUREMENT>& measurement) {
    return measurement ? Json{{"value", OptionalJson(measurement->value)},
                              {"text", measurement->text},
                              {"unit", measurement->unit},
                              {"within", measurement->bWithin}}
                       : Json();
}

static Json ComparedJson(const COMPARED_RUNS& runs) {
    Json json = {
        {"sequence", runs.left.sequence},
        {"left", StoredRunJson(runs.left)},
        {"right", StoredRunJson(runs.right)},
        {"measurements", Json::array()}};
    for (const MEASURED_PAIR& pair : runs.measurements) {
        json["measurements"].push_back(
            {{"step", pair.Any().number},
             {"name", pair.Any().name},
             {"left", ValueJson(pair.left)},
             {"right", ValueJson(pair.right)},
             {"difference", OptionalJson(pair.Difference())}});
    }
    return json;
}

static void CompareSerials(
    const HOST& host, const std::string& place, std::uint32_t left, std::uint32_t right) {
    const auto pDatabase = OpenHistory(place);
    Json sequences = Json::array();
    for (const COMPARED_RUNS& runs : CompareBodies(*pDatabase, left, right)) {
        host.bJson ? sequences.push_back(ComparedJson(runs)) : ShowComparedRuns(runs);
    }
    if (host.bJson) {
        WriteJson(std::cout, {{"format", JSON_FORMAT}, {"sequences", sequences}});
    }
}

void AddHistoryCompareCommand(Command& history, HOST& host) {
    Command command = history.AddCommand(
        "compare", "Shows what was measured on two bodies side by side, by their last runs");
    struct OPTIONS {
        std::string left;
        std::string right;
        std::string place;
    };
    const auto pOptions = std::make_shared<OPTIONS>();
    command.AddArgument("left", pOptions->left, "A body's serial number");
    command.AddArgument("right", pOptions->right, "Another one's");
    AddDatabaseOption(command, pOptions->place);
    AddJsonOption(command, host);
    command.SetFooter(
        "Example:\n"
        "  jighost history compare 12345 12346\n"
        "The difference is right less left. Ends with 5 if no sequence has run to its end on "
        "both.");
    command.SetWork([&host, pOptions] {
        CompareSerials(
            host, pOptions->place, ParseSerial("left", pOptions->left),
            ParseSerial("right", pOptions->right));
    });
}

// --- export ---

static const char CSV_NAMES[] =
    "record,started,station,operator,serial,sequence,outcome,problem,step,step_name,operation,"
    "step_outcome,step_problem,measurement,unit,value,text,min,max,judged,within\n";

/// In quotes where a spreadsheet needs them.
static std::string Cell(const std::string& text) {
    std::string plain = PlainText(text);
    if (plain.find_first_of(",\"") == std::string::npos) {
        return plain;
    }
    std::string quoted = "\"";
    for (const char character : plain) {
        quoted += character == '"' ? "\"\"" : std::string(1, character);
    }
    return quoted + '"';
}

static std::string Cell(const std::optional<double>& number) {
    return number ? NumberText(*number) : "";
}

template <class... Texts>
static std::string Cells(const Texts&... texts) {
    return ((Cell(texts) + ',') + ...);
}

static std::string MeasuredCells(const STORED_MEASUREMENT& each) {
    return Cells(each.name, each.unit, each.value, each.text, each.min, each.max) +
           (each.bJudged ? "1," : "0,") + (each.bWithin ? "1" : "0");
}
static const char NO_MEASUREMENT[] = ",,,,,,,";
static const char NO_STEP[] = ",,,,,,,,,,,,";

/// A line for each measurement; for a step without one, and for a run without steps, too.
static void ExportRun(Database& database, const STORED_RUN& run) {
    const std::string head = Cells(run.number, run.started, run.station, run.operatorName) +
                             (run.serial ? std::to_string(*run.serial) : "") + ',' +
                             Cells(run.sequence, run.outcome, run.problem);
    const auto steps = StepsOf(database, run);
    const auto measurements = MeasurementsOf(database, run);
    auto next = measurements.begin();
    for (const STORED_STEP& step : steps) {
        const std::string line = head + std::to_string(step.number) + ',' +
                                 Cells(step.name, step.operation, step.outcome, step.problem);
        if (next == measurements.end() || next->step != step.place) {
            std::cout << line << NO_MEASUREMENT << '\n';
        }
        for (; next != measurements.end() && next->step == step.place; ++next) {
            std::cout << line << MeasuredCells(*next) << '\n';
        }
    }
    if (steps.empty()) {
        std::cout << head << NO_STEP << '\n';
    }
}

void AddHistoryExportCommand(Command& history) {
    Command command = history.AddCommand("export", "Prints all measurements for other programs");
    struct OPTIONS {
        std::string place;
        FILTER_OPTIONS filter;
        bool bCsv = false;
    };
    const auto pOptions = std::make_shared<OPTIONS>();
    command.AddFlag("--csv", pOptions->bCsv, "As a table with commas: the one form there is");
    AddDatabaseOption(command, pOptions->place);
    pOptions->filter.AddTo(command);
    command.SetFooter(
        "Example:\n"
        "  jighost history export --csv --since 2026-11-01 >november.csv\n"
        "A line for each measurement, one for each step without any, one for each run without "
        "steps.");
    command.SetWork([pOptions] {
        if (!pOptions->bCsv) {
            throw HostError(EXIT_WRONG_USE, "export: expected --csv, the one form there is");
        }
        const RUN_FILTER filter = pOptions->filter.Filter();
        const auto pDatabase = OpenHistory(pOptions->place);
        std::cout << CSV_NAMES;
        EachRun(*pDatabase, filter, [&](const STORED_RUN& run) { ExportRun(*pDatabase, run); });
    });
}
