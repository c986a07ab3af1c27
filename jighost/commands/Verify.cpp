// jighost verify: a dump held against the catalogue and against the body that it came from.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <iomanip>
#include <iostream>
#include <memory>
#include <set>
#include <sstream>

#include "bodylnk/SimulatedBody.h"
#include "jighost/check/DumpFolder.h"
#include "jighost/commands/CommonOptions.h"
#include "jighost/output/Json.h"
#include "jighost/session/BodyFile.h"

namespace {

struct FINDING {
    std::string kind;  ///< "missing", "length", "bytes" or "foreign"
    std::string file;
    std::string property;  ///< empty for a foreign file
    std::string text;
};

using Findings = std::vector<FINDING>;

}  // namespace

static void CheckBytes(
    const std::filesystem::path& path, const PROPERTY_DATA_T& row, Findings& findings) {
    const SimulatedBody::Bytes bytes = SimulatedBody::SavedValue(row.PropertyId);
    std::istringstream expected(std::string(bytes.begin(), bytes.end()));
    std::ifstream file = OpenDumpFile(path);
    const COMPARISON comparison = Compare(file, expected);
    if (comparison.differing > 0) {
        findings.push_back(
            {"bytes", DumpFileName(row), row.PropertyName, ComparisonText(comparison)});
    }
}

static void CheckRow(
    const std::filesystem::path& folder, const PROPERTY_DATA_T& row, bool bBody,
    Findings& findings) {
    const std::string name = DumpFileName(row);
    const std::uint64_t size = DumpFileSize(row);
    std::error_code error;
    if (!std::filesystem::is_regular_file(folder / name, error)) {
        findings.push_back(
            {"missing", name, row.PropertyName, std::to_string(size) + " bytes expected"});
        return;
    }
    const std::uint64_t found = std::filesystem::file_size(folder / name);
    if (found != size) {
        findings.push_back(
            {"length", name, row.PropertyName,
             std::to_string(found) + " bytes, " + std::to_string(size) + " expected"});
    } else if (bBody) {
        CheckBytes(folder / name, row, findings);
    }
}

static void CheckForeignFiles(const std::filesystem::path& folder, Findings& findings) {
    std::set<std::string> foreign;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        foreign.insert(entry.path().filename().string());
    }
    for (std::size_t i = 0; i < PROPERTY_COUNT; ++i) {
        foreign.erase(DumpFileName(PropertyDataTable[i]));
    }
    for (const std::string& name : foreign) {
        findings.push_back({"foreign", name, "", "not in the catalogue"});
    }
}

static Findings CheckDump(const std::filesystem::path& folder, bool bBody) {
    Findings findings;
    for (std::size_t i = 0; i < PROPERTY_COUNT; ++i) {
        CheckRow(folder, PropertyDataTable[i], bBody, findings);
    }
    CheckForeignFiles(folder, findings);
    return findings;
}

static void ShowFindings(const Findings& findings) {
    for (const FINDING& finding : findings) {
        std::cout << std::left << std::setw(9) << finding.kind << std::setw(14) << finding.file
                  << std::setw(34) << finding.property << finding.text << '\n';
    }
    std::cout << PROPERTY_COUNT << " files expected, ";
    if (findings.empty()) {
        std::cout << "all as they should be\n";
    } else {
        std::cout << findings.size() << (findings.size() == 1 ? " finding\n" : " findings\n");
    }
}

static void ShowFindingsAsJson(const Findings& findings) {
    Json list = Json::array();
    for (const FINDING& finding : findings) {
        list.push_back(
            {{"kind", finding.kind},
             {"file", finding.file},
             {"property", finding.property},
             {"text", finding.text}});
    }
    WriteJson(
        std::cout,
        {{"format", JSON_FORMAT}, {"files_expected", PROPERTY_COUNT}, {"findings", list}});
}

static EXIT_CODE Verify(const HOST& host, const std::string& folder) {
    CheckFolder(folder);
    const bool bBody = !host.session.bodyPath.empty();
    if (bBody) {
        SimulatedBody::Reset();
        LoadBody(host.session.bodyPath);
    }
    const Findings findings = CheckDump(folder, bBody);
    host.bJson ? ShowFindingsAsJson(findings) : ShowFindings(findings);
    return findings.empty() ? EXIT_OK : EXIT_UNEXPECTED;
}

void AddVerifyCommand(CLI::App& app, HOST& host) {
    CLI::App* pCommand = app.add_subcommand(
        "verify", "Checks a dump's files against the catalogue, and against a body's saved values");
    const auto pFolder = std::make_shared<std::string>();
    pCommand->add_option("folder", *pFolder, "The dump's folder")->required();
    pCommand->add_option("--body", host.session.bodyPath, "The file of the body that was dumped")
        ->type_name("FILE");
    AddJsonOption(*pCommand, host);
    pCommand->footer(
        "Examples:\n"
        "  jighost verify adjust\n"
        "  jighost verify adjust --body desk.yaml\n"
        "Ends with 5 if anything is missing, too long, too short, foreign or different.");
    pCommand->callback([&host, pFolder] { host.exitCode = Verify(host, *pFolder); });
}
