// jighost diff: which properties differ between two dumps.
#include <array>
#include <iomanip>
#include <iostream>
#include <memory>

#include "jighost/check/DumpDifference.h"
#include "jighost/commands/CommonOptions.h"
#include "jighost/output/Json.h"
#include "jighost/text/PlainText.h"
#include "platform/Utf8Path.h"
#include "trace/Hex.h"

static EXIT_CODE Diff(const HOST& host, const std::string& left, const std::string& right);

void AddDiffCommand(Command& program, HOST& host) {
    Command command = program.AddCommand("diff", "Tells which properties differ between two dumps");
    const auto pFolders = std::make_shared<std::array<std::string, 2>>();
    command.AddArgument("left", (*pFolders)[0], "A dump's folder");
    command.AddArgument("right", (*pFolders)[1], "Another dump's folder");
    AddJsonOption(command, host);
    command.SetFooter(
        "Example:\n"
        "  jighost diff before after\n"
        "Files that are not of the catalogue do not count. Ends with 5 if there are differences, "
        "or\n"
        "properties that neither dump has whole.");
    command.SetWork(
        [&host, pFolders] { host.exitCode = Diff(host, (*pFolders)[0], (*pFolders)[1]); });
}

static std::string BytesText(const std::vector<std::uint8_t>& bytes) {
    return bytes.empty() ? "the file ends" : HexBytes(bytes);
}

static void ShowDifference(const ROW_DIFFERENCE& difference) {
    std::cout << std::left << std::setw(14) << DumpFileName(*difference.pRow) << std::setw(34)
              << difference.pRow->PropertyName;
    if (!difference.onlyIn.empty()) {
        std::cout << "only in " << PlainText(difference.onlyIn) << '\n';
        return;
    }
    std::cout << ComparisonText(difference.comparison)
              << "\n    left:  " << BytesText(difference.comparison.left)
              << "\n    right: " << BytesText(difference.comparison.right) << '\n';
}

static void ShowDifferences(const DUMP_DIFFERENCE& dumps) {
    for (const ROW_DIFFERENCE& difference : dumps.differences) {
        ShowDifference(difference);
    }
    std::cout << dumps.compared << " properties in both, ";
    if (dumps.missing > 0) {
        std::cout << dumps.missing << " in neither, ";
    }
    std::cout << dumps.differences.size()
              << (dumps.differences.size() == 1 ? " difference\n" : " differences\n");
}

static void ShowDifferencesAsJson(const DUMP_DIFFERENCE& dumps) {
    Json list = Json::array();
    for (const ROW_DIFFERENCE& difference : dumps.differences) {
        Json entry = {
            {"file", DumpFileName(*difference.pRow)}, {"property", difference.pRow->PropertyName}};
        if (difference.onlyIn.empty()) {
            entry["bytes"] = difference.comparison.differing;
            entry["first"] = difference.comparison.first;
            entry["left"] = HexBytes(difference.comparison.left);
            entry["right"] = HexBytes(difference.comparison.right);
        } else {
            entry["only_in"] = difference.onlyIn;
        }
        list.push_back(entry);
    }
    WriteJson(
        std::cout, {{"format", JSON_FORMAT},
                    {"compared", dumps.compared},
                    {"missing", dumps.missing},
                    {"differences", list}});
}

static EXIT_CODE Diff(const HOST& host, const std::string& left, const std::string& right) {
    CheckDumpFolder(PathOf(left));
    CheckDumpFolder(PathOf(right));
    const DUMP_DIFFERENCE dumps = CompareDumps(left, right);
    host.bJson ? ShowDifferencesAsJson(dumps) : ShowDifferences(dumps);
    return dumps.differences.empty() && dumps.missing == 0 ? EXIT_OK : EXIT_UNEXPECTED;
}
