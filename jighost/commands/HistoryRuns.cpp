// jighost history list, jighost history show: runs one by one.
#include <iomanip>
#include <iostream>
#include <memory>

#include "jighost/commands/CommonOptions.h"
#include "jighost/commands/History.h"
#include "jighost/history/History.h"
#include "jighost/history/Runs.h"
#include "jighost/output/Json.h"
#include "jighost/text/Limits.h"
#include "jighost/text/PlainText.h"

Json StoredRunJson(const STORED_RUN& run) {
    return {
        {"record", run.number},
        {"started", run.started},
        {"started_at", run.startedAt},
        {"time_ms", run.timeMs},
        {"station", run.station},
        {"operator", run.operatorName},
        {"serial", OptionalJson(run.serial)},
        {"sequence", run.sequence},
        {"outcome", run.outcome},
        {"problem", run.problem}};
}

static std::string SerialText(const STORED_RUN& run) {
    return run.serial ? std::to_string(*run.serial) : "-";
}

// --- list ---

static void ListStoredRun(const STORED_RUN& run) {
    std::cout << std::left << std::setw(29) << Shown(run.started) << "  " << std::setw(10)
              << Shown(run.outcome) << "  " << std::right << std::setw(10) << SerialText(run)
              << "  " << std::left << std::setw(12) << Shown(run.station) << "  " << std::setw(16)
              << Shown(run.sequence) << "  " << Shown(run.number) << '\n';
}

static void ListRuns(Database& database, const RUN_FILTER& filter) {
    std::size_t count = 0;
    EachRun(database, filter, [&](const STORED_RUN& run) {
        if (count++ == 0) {
            std::cout << "started                        outcome         serial  station       "
                         "sequence          record\n";
        }
        ListStoredRun(run);
    });
    std::cout << CountText(count, "run") << '\n';
}

static void ListJson(Database& database, const RUN_FILTER& filter) {
    Json runs = Json::array();
    EachRun(database, filter, [&](const STORED_RUN& run) { runs.push_back(StoredRunJson(run)); });
    WriteJson(std::cout, {{"format", JSON_FORMAT}, {"runs", runs}});
}

void AddHistoryListCommand(Command& history, HOST& host) {
    Command command = history.AddCommand("list", "Lists runs, from the oldest to the newest");
    struct OPTIONS {
        std::string place;
        FILTER_OPTIONS filter;
    };
    const auto pOptions = std::make_shared<OPTIONS>();
    AddDatabaseOption(command, pOptions->place);
    pOptions->filter.AddTo(command);
    AddJsonOption(command, host);
    command.SetFooter(
        "Example:\n"
        "  jighost history list --station \"line 4\" --outcome failed --since 2026-11-23\n"
        "Days are those of the station's calendar.");
    command.SetWork([&host, pOptions] {
        const RUN_FILTER filter = pOptions->filter.Filter();
        const auto pDatabase = OpenHistory(pOptions->place);
        host.bJson ? ListJson(*pDatabase, filter) : ListRuns(*pDatabase, filter);
    });
}

// --- show ---

static void ShowHead(const STORED_RUN& run) {
    const auto row = [](const char* pszName, const std::string& text) {
        std::cout << std::left << std::setw(10) << pszName << text << '\n';
    };
    row("record", Shown(run.number));
    row("started", Shown(run.started));
    row("station", Shown(run.station));
    row("operator", Shown(run.operatorName));
    row("body", SerialText(run));
    row("sequence", Shown(run.sequence));
    row("sha256", Shown(run.sequenceHash));
    row("outcome", Shown(run.outcome));
    row("problem", Shown(run.problem));
    row("file", Shown(run.path));
}

static void ShowStoredMeasurement(const STORED_MEASUREMENT& measurement) {
    const std::string limits = LimitsText({measurement.min, measurement.max});
    std::cout << "     " << PlainText(measurement.name) << ": " << PlainText(measurement.text)
              << (measurement.unit.empty() ? "" : ' ' + PlainText(measurement.unit))
              << (limits.empty() ? "" : " (" + limits + ')');
    if (measurement.bJudged) {
        std::cout << (measurement.bWithin ? ", passed" : ", failed");
    }
    std::cout << '\n';
}

static void ShowStoredStep(
    const STORED_STEP& step, const std::vector<STORED_MEASUREMENT>& measurements) {
    std::cout << std::right << std::setw(3) << step.number << "  " << std::left << std::setw(28)
              << PlainText(step.name) << ' ' << std::right << std::setw(10) << std::fixed
              << std::setprecision(1) << step.timeMs << " ms  " << PlainText(step.outcome) << '\n';
    if (!step.problem.empty()) {
        std::cout << "     " << PlainText(step.problem) << '\n';
    }
    for (const STORED_MEASUREMENT& measurement : measurements) {
        if (measurement.step == step.place) {
            ShowStoredMeasurement(measurement);
        }
    }
}

static void ShowStoredRun(Database& database, const STORED_RUN& run) {
    ShowHead(run);
    const auto measurements = MeasurementsOf(database, run);
    for (const STORED_STEP& step : StepsOf(database, run)) {
        ShowStoredStep(step, measurements);
    }
}

static Json StoredMeasurementJson(const STORED_MEASUREMENT& measurement) {
    return {
        {"name", measurement.name},
        {"unit", measurement.unit},
        {"text", measurement.text},
        {"value", OptionalJson(measurement.value)},
        {"min", OptionalJson(measurement.min)},
        {"max", OptionalJson(measurement.max)},
        {"judged", measurement.bJudged},
        {"within", measurement.bWithin}};
}

static Json StoredStepJson(
    const STORED_STEP& step, const std::vector<STORED_MEASUREMENT>& measurements) {
    Json json = {{"number", step.number},       {"name", step.name},
                 {"operation", step.operation}, {"outcome", step.outcome},
                 {"problem", step.problem},     {"time_ms", step.timeMs},
                 {"attempts", step.attempts},   {"measurements", Json::array()}};
    for (const STORED_MEASUREMENT& measurement : measurements) {
        if (measurement.step == step.place) {
            json["measurements"].push_back(StoredMeasurementJson(measurement));
        }
    }
    return json;
}

static void ShowRunJson(Database& database, const STORED_RUN& run) {
    Json json = {{"format", JSON_FORMAT}};
    json.update(StoredRunJson(run));
    json["sequence_sha256"] = run.sequenceHash;
    json["path"] = run.path;
    json["steps"] = Json::array();
    const auto measurements = MeasurementsOf(database, run);
    for (const STORED_STEP& step : StepsOf(database, run)) {
        json["steps"].push_back(StoredStepJson(step, measurements));
    }
    WriteJson(std::cout, json);
}

static EXIT_CODE ShowRecord(const std::string& place, const std::string& number, bool bJson) {
    const auto pDatabase = OpenHistory(place);
    const auto run = FindRun(*pDatabase, number);
    if (!run) {
        throw HostError(
            EXIT_UNEXPECTED, "there is no record " + number + " in " + pDatabase->Name());
    }
    bJson ? ShowRunJson(*pDatabase, *run) : ShowStoredRun(*pDatabase, *run);
    return EXIT_OK;
}

void AddHistoryShowCommand(Command& history, HOST& host) {
    Command command = history.AddCommand("show", "Shows one run with its steps and measurements");
    struct OPTIONS {
        std::string place;
        std::string number;
    };
    const auto pOptions = std::make_shared<OPTIONS>();
    command.AddArgument("record", pOptions->number, "The record's number, as list shows it");
    AddDatabaseOption(command, pOptions->place);
    AddJsonOption(command, host);
    command.SetFooter(
        "Example:\n"
        "  jighost history show 3f0e7a52-8a4c-4d1e-9d25-6f6e0c1b7a90\n"
        "Ends with 5 if there is no such record. What is not shown, such as calls and log lines,\n"
        "stands in the record's file.");
    command.SetWork([&host, pOptions] {
        host.exitCode = ShowRecord(pOptions->place, pOptions->number, host.bJson);
    });
}
