// jighost diff: which properties differ between two dumps.
#include <CLI/CLI.hpp>
#include <array>
#include <iomanip>
#include <iostream>
#include <memory>

#include "jighost/check/DumpFolder.h"
#include "jighost/commands/CommonOptions.h"
#include "jighost/output/Json.h"

namespace {

struct DIFFERENCE {
    const PROPERTY_DATA_T* pRow;
    std::string onlyIn;  ///< the folder that alone has the file; empty if both have it
    COMPARISON comparison;
};

/// What two dumps came to.
struct DUMP_DIFFERENCE {
    std::size_t compared = 0;  ///< properties that both folders have
    std::vector<DIFFERENCE> differences;
};

}  // namespace

static void CompareRow(
    const PROPERTY_DATA_T& row, const std::string& left, const std::string& right,
    DUMP_DIFFERENCE& dumps) {
    const std::string name = DumpFileName(row);
    const auto hasFile = [&](const std::string& folder) {
        std::error_code error;
        return std::filesystem::is_regular_file(std::filesystem::path(folder) / name, error);
    };
    const bool bLeft = hasFile(left);
    if (bLeft != hasFile(right)) {
        dumps.differences.push_back({&row, bLeft ? left : right, {}});
    } else if (bLeft) {
        ++dumps.compared;
        std::ifstream leftFile = OpenDumpFile(std::filesystem::path(left) / name);
        std::ifstream rightFile = OpenDumpFile(std::filesystem::path(right) / name);
        const COMPARISON comparison = Compare(leftFile, rightFile);
        if (comparison.differing > 0) {
            dumps.differences.push_back({&row, "", comparison});
        }
    }
}

static void ShowDifferences(const DUMP_DIFFERENCE& dumps) {
    for (const DIFFERENCE& difference : dumps.differences) {
        std::cout << std::left << std::setw(14) << DumpFileName(*difference.pRow) << std::setw(34)
                  << difference.pRow->PropertyName
                  << (difference.onlyIn.empty() ? ComparisonText(difference.comparison)
                                                : "only in " + difference.onlyIn)
                  << '\n';
    }
    std::cout << dumps.compared << " properties in both, " << dumps.differences.size()
              << (dumps.differences.size() == 1 ? " difference\n" : " differences\n");
}

static void ShowDifferencesAsJson(const DUMP_DIFFERENCE& dumps) {
    Json list = Json::array();
    for (const DIFFERENCE& difference : dumps.differences) {
        Json entry = {
            {"file", DumpFileName(*difference.pRow)}, {"property", difference.pRow->PropertyName}};
        if (difference.onlyIn.empty()) {
            entry["bytes"] = difference.comparison.differing;
            entry["first"] = difference.comparison.first;
        } else {
            entry["only_in"] = difference.onlyIn;
        }
        list.push_back(entry);
    }
    WriteJson(
        std::cout, {{"format", JSON_FORMAT}, {"compared", dumps.compared}, {"differences", list}});
}

static EXIT_CODE Diff(const HOST& host, const std::string& left, const std::string& right) {
    CheckFolder(left);
    CheckFolder(right);
    DUMP_DIFFERENCE dumps;
    for (std::size_t i = 0; i < PROPERTY_COUNT; ++i) {
        CompareRow(PropertyDataTable[i], left, right, dumps);
    }
    host.bJson ? ShowDifferencesAsJson(dumps) : ShowDifferences(dumps);
    return dumps.differences.empty() ? EXIT_OK : EXIT_UNEXPECTED;
}

void AddDiffCommand(CLI::App& app, HOST& host) {
    CLI::App* pCommand =
        app.add_subcommand("diff", "Tells which properties differ between two dumps");
    const auto pFolders = std::make_shared<std::array<std::string, 2>>();
    pCommand->add_option("left", (*pFolders)[0], "A dump's folder")->required();
    pCommand->add_option("right", (*pFolders)[1], "Another dump's folder")->required();
    AddJsonOption(*pCommand, host);
    pCommand->footer(
        "Example:\n"
        "  jighost diff before after\n"
        "Files that are not of the catalogue do not count. Ends with 5 if there are differences.");
    pCommand->callback(
        [&host, pFolders] { host.exitCode = Diff(host, (*pFolders)[0], (*pFolders)[1]); });
}
