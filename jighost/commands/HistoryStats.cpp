// jighost history stats: what many runs come to.
#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <limits>
#include <memory>

#include "jighost/commands/CommonOptions.h"
#include "jighost/commands/History.h"
#include "jighost/history/History.h"
#include "jighost/history/Stats.h"
#include "jighost/output/Json.h"
#include "jighost/text/Numbers.h"

static std::string DayText(std::int64_t nDay) {
    const std::chrono::year_month_day date{
        std::chrono::sys_days(std::chrono::days(static_cast<int>(nDay)))};
    std::string text = std::to_string(static_cast<int>(date.year()));
    for (const unsigned part :
         {static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day())}) {
        text += (part < 10 ? "-0" : "-") + std::to_string(part);
    }
    return text;
}

// --- For people ---

static constexpr int DIGITS = 6;

/// "-" stands for what there is not.
static std::string Rounded(const std::optional<double>& number, int nDigits = DIGITS) {
    if (!number) {
        return "-";
    }
    std::array<char, 32> text{};
    return {
        text.data(),
        std::to_chars(text.begin(), text.end(), *number, std::chars_format::general, nDigits).ptr};
}

/// The place of the first digit: 0 of ones, 1 of tens.
static int PlaceOf(double number) {
    return number == 0 ? 0 : static_cast<int>(std::floor(std::log10(std::abs(number))));
}

/// With all digits ahead of the point, and with those that tell a hundredth of the deviation.
static std::string SpreadText(const std::optional<double>& value, std::optional<double> deviation) {
    if (!value) {
        return Rounded(value);
    }
    const int nPlace = PlaceOf(*value);
    const int nAll = std::numeric_limits<double>::digits10;
    const bool bSpread = deviation.value_or(0) > 0;
    const int nTelling = bSpread ? nPlace - PlaceOf(*deviation) + 3 : nAll;
    return Rounded(
        value, std::clamp(std::max(nTelling, nPlace < nAll ? nPlace + 1 : 0), DIGITS, nAll));
}

static std::string LimitShown(const std::optional<double>& limit) {
    return limit ? NumberText(*limit) : "-";
}

static std::string ShareText(std::int64_t nPart, std::int64_t nWhole) {
    const double share = nWhole == 0 ? 0 : static_cast<double>(nPart) / static_cast<double>(nWhole);
    return std::to_string(nPart) + " of " + std::to_string(nWhole) +
           (nWhole == 0 ? "" : " (" + Rounded(std::round(share * 1000) / 10) + " %)");
}

static void ShowSequence(const RUN_STATS& stats) {
    std::cout << Shown(stats.sequence) << ": "
              << CountText(static_cast<std::size_t>(stats.runs), "run") << ", " << stats.passed
              << " passed, " << stats.failed << " failed, " << stats.errors << " error, "
              << stats.aborted << " aborted, " << stats.unfinished << " unfinished\n"
              << "  bodies that passed in the first run: "
              << ShareText(stats.firstPassed, stats.bodies)
              << "\n  bodies that passed in the last run:  "
              << ShareText(stats.finalPassed, stats.bodies) << '\n';
}

static void ShowStepFailures(const std::vector<STEP_FAILURES>& steps) {
    if (!steps.empty()) {
        std::cout << "\nfailures  sequence          step  operation                     name\n";
    }
    for (const STEP_FAILURES& each : steps) {
        std::cout << std::right << std::setw(8) << each.count << "  " << std::left << std::setw(16)
                  << Shown(each.sequence) << "  " << std::right << std::setw(4) << each.step << "  "
                  << std::left << std::setw(28) << Shown(each.operation) << "  " << Shown(each.name)
                  << '\n';
    }
}

/// The numbers ahead of a measurement.
static constexpr std::size_t CELL_COUNT = 11;
using CELLS = std::array<std::string, CELL_COUNT>;

static CELLS CellsOf(const MEASUREMENT_STATS& stats) {
    return {
        LimitShown(stats.min),
        LimitShown(stats.max),
        std::to_string(stats.count),
        std::to_string(stats.outside),
        SpreadText(stats.mean, stats.deviation),
        Rounded(stats.deviation),
        SpreadText(stats.least, stats.deviation),
        SpreadText(stats.greatest, stats.deviation),
        Rounded(stats.cp),
        Rounded(stats.cpk),
        Rounded(stats.drift)};
}

static void ShowMeasured(const MEASUREMENT_STATS& stats) {
    std::cout << Shown(stats.sequence) << ", step " << stats.step << ": " << Shown(stats.name)
              << (stats.unit.empty() ? "" : ", " + Shown(stats.unit)) << '\n';
    if (stats.leftOut > 0) {
        std::cout << "  " << CountText(static_cast<std::size_t>(stats.leftOut), "number")
                  << " of 1e150 or more left out\n";
    }
}

/// Of each column as its widest cell has.
static std::array<int, CELL_COUNT> WidthsOf(const std::vector<CELLS>& rows) {
    std::array<int, CELL_COUNT> widths{};
    for (const CELLS& cells : rows) {
        for (std::size_t i = 0; i < CELL_COUNT; ++i) {
            widths[i] = std::max({widths[i], 10, static_cast<int>(cells[i].size())});
        }
    }
    return widths;
}

static void ShowMeasurements(const std::vector<MEASUREMENT_STATS>& measurements) {
    std::vector<CELLS> rows = {
        {"min", "max", "numbers", "outside", "mean", "deviation", "least", "greatest", "Cp", "Cpk",
         "a day"}};
    std::transform(measurements.begin(), measurements.end(), std::back_inserter(rows), CellsOf);
    const auto widths = WidthsOf(rows);
    const auto showCells = [&](std::size_t row) {
        for (std::size_t i = 0; i < CELL_COUNT; ++i) {
            std::cout << "  " << std::right << std::setw(widths[i]) << rows[row][i];
        }
        std::cout << "  ";
    };
    showCells(0);
    std::cout << "measurement\n";
    for (std::size_t i = 0; i < measurements.size(); ++i) {
        showCells(i + 1);
        ShowMeasured(measurements[i]);
    }
}

static void ShowStats(const HISTORY_STATS& stats) {
    for (const RUN_STATS& sequence : stats.sequences) {
        ShowSequence(sequence);
    }
    if (stats.sequences.empty()) {
        std::cout << "0 runs\n";
    }
    ShowStepFailures(stats.steps);
    if (!stats.measurements.empty()) {
        std::cout << '\n';
        ShowMeasurements(stats.measurements);
    }
}

// --- For programs ---

static Json SequenceJson(const RUN_STATS& stats) {
    return {{"sequence", stats.sequence},
            {"runs", stats.runs},
            {"passed", stats.passed},
            {"failed", stats.failed},
            {"error", stats.errors},
            {"aborted", stats.aborted},
            {"unfinished", stats.unfinished},
            {"bodies", stats.bodies},
            {"first_passed", stats.firstPassed},
            {"final_passed", stats.finalPassed}};
}

static Json MeasuredJson(const MEASUREMENT_STATS& stats) {
    Json json = {
        {"sequence", stats.sequence},
        {"step", stats.step},
        {"name", stats.name},
        {"unit", stats.unit},
        {"min", OptionalJson(stats.min)},
        {"max", OptionalJson(stats.max)},
        {"count", stats.count},
        {"outside", stats.outside},
        {"left_out", stats.leftOut},
        {"mean", OptionalJson(stats.mean)},
        {"deviation", OptionalJson(stats.deviation)},
        {"least", OptionalJson(stats.least)},
        {"greatest", OptionalJson(stats.greatest)},
        {"cp", OptionalJson(stats.cp)},
        {"cpk", OptionalJson(stats.cpk)},
        {"drift", OptionalJson(stats.drift)},
        {"days", Json::array()}};
    for (const DAY_MEAN& day : stats.days) {
        json["days"].push_back(
            {{"day", DayText(day.day)}, {"count", day.count}, {"mean", day.mean}});
    }
    return json;
}

static void ShowStatsJson(const HISTORY_STATS& stats) {
    Json json = {
        {"format", JSON_FORMAT},
        {"sequences", Json::array()},
        {"failed_steps", Json::array()},
        {"measurements", Json::array()}};
    for (const RUN_STATS& each : stats.sequences) {
        json["sequences"].push_back(SequenceJson(each));
    }
    for (const STEP_FAILURES& each : stats.steps) {
        json["failed_steps"].push_back(
            {{"sequence", each.sequence},
             {"step", each.step},
             {"operation", each.operation},
             {"name", each.name},
             {"failures", each.count}});
    }
    for (const MEASUREMENT_STATS& each : stats.measurements) {
        json["measurements"].push_back(MeasuredJson(each));
    }
    WriteJson(std::cout, json);
}

void AddHistoryStatsCommand(Command& history, HOST& host) {
    Command command = history.AddCommand(
        "stats", "Tells yields, failures, and how measurements are spread and drift");
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
        "  jighost history stats --sequence adjust --since 2026-11-01\n"
        "Ahead of each measurement: its limits, how many numbers, how many outside, mean, "
        "standard\n"
        "deviation, least, greatest, Cp, Cpk, and the drift of the daily means in a day.");
    command.SetWork([&host, pOptions] {
        const RUN_FILTER filter = pOptions->filter.Filter();
        const auto pDatabase = OpenHistory(pOptions->place);
        const HISTORY_STATS stats = StatsOf(*pDatabase, filter);
        host.bJson ? ShowStatsJson(stats) : ShowStats(stats);
    });
}
