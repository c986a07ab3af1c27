// jighost trace diff: why one body passes and another one does not.
#include <algorithm>
#include <array>
#include <iomanip>
#include <iostream>
#include <memory>

#include "jighost/commands/CommonOptions.h"
#include "jighost/output/Json.h"
#include "jighost/recording/TraceDifference.h"
#include "jighost/session/Interrupt.h"
#include "jighost/text/PlainText.h"

static EXIT_CODE DiffTraces(const HOST& host, const std::string& good, const std::string& bad);

void AddTraceDiffCommand(Command& trace, HOST& host) {
    Command command = trace.AddCommand(
        "diff", "Holds two traces against each other, operation by operation and call by call");
    const auto pPaths = std::make_shared<std::array<std::string, 2>>();
    command.AddArgument("good", (*pPaths)[0], "A file of --trace or of the recorder");
    command.AddArgument("bad", (*pPaths)[1], "Another one");
    AddJsonOption(command, host);
    command.SetFooter(
        "Example:\n"
        "  jighost trace diff good.jsonl bad.jsonl\n"
        "Moments, times and log lines may differ. An operation that one of the two lacks is "
        "passed\n"
        "over. Ends with 5 if there is a difference, or if one of the traces is not whole.");
    command.SetWork(
        [&host, pPaths] { host.exitCode = DiffTraces(host, (*pPaths)[0], (*pPaths)[1]); });
}

// --- For people ---

static void ShowFirst(const DIFFERENCE& first, std::uint32_t badNumber) {
    std::cout << "operation ";
    if (first.operation == 0 || badNumber == 0) {
        std::cout << first.operation + badNumber << ", " << PlainText(first.name) << ", is one "
                  << first.where << "\n\n";
        return;
    }
    std::cout << first.operation << " and operation " << badNumber << ", " << PlainText(first.name)
              << ", differ in " << first.where << "\n  good: " << first.expected
              << "\n  bad:  " << first.made << "\n\n";
}

static void ShowCounts(const TRACE_DIFFERENCE& difference) {
    const auto row = [](const std::string& name, const auto&... cells) {
        std::cout << std::left << std::setw(32) << name << std::right;
        ((std::cout << ' ' << std::setw(10) << cells), ...);
        std::cout << '\n';
    };
    row("", "same", "different", "incomplete", "only good", "only bad");
    for (const auto& [name, counts] : difference.counts) {
        row(PlainText(name), counts.same, counts.different, counts.incomplete, counts.onlyGood,
            counts.onlyBad);
    }
    if (difference.lost > 0) {
        std::cout << "gaps and operations without a beginning: " << difference.lost << '\n';
    }
}

static void Show(const TRACE_DIFFERENCE& difference) {
    if (difference.first) {
        ShowFirst(*difference.first, difference.badNumber);
    }
    ShowCounts(difference);
}

// --- For programs ---

static void ShowJson(const TRACE_DIFFERENCE& difference) {
    Json operations = Json::array();
    for (const auto& [name, counts] : difference.counts) {
        operations.push_back(
            {{"operation", name},
             {"same", counts.same},
             {"different", counts.different},
             {"incomplete", counts.incomplete},
             {"only_good", counts.onlyGood},
             {"only_bad", counts.onlyBad}});
    }
    Json json = {
        {"format", JSON_FORMAT},
        {"first", nullptr},
        {"operations", operations},
        {"lost", difference.lost}};
    if (const auto& first = difference.first) {
        json["first"] = {{"operation", first->name},
                         {"good_number", first->operation},
                         {"bad_number", difference.badNumber},
                         {"where", first->where},
                         {"good", first->expected},
                         {"bad", first->made}};
    }
    WriteJson(std::cout, json);
}

static bool IsSame(const TRACE_DIFFERENCE& difference) {
    return !difference.first && difference.lost == 0 &&
           std::all_of(difference.counts.begin(), difference.counts.end(), [](const auto& each) {
               return each.second.incomplete == 0;
           });
}

static EXIT_CODE DiffTraces(const HOST& host, const std::string& good, const std::string& bad) {
    CatchInterrupts();
    const TRACE_DIFFERENCE difference = CompareTraces(good, bad);
    host.bJson ? ShowJson(difference) : Show(difference);
    if (IsInterrupted()) {
        return EXIT_INTERRUPTED;
    }
    return IsSame(difference) ? EXIT_OK : EXIT_UNEXPECTED;
}
