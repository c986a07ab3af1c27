// jighost verify: a dump held against the catalogue and against the body that it came from.
#include <iomanip>
#include <iostream>
#include <memory>

#include "bodylnk/SimulatedBody.h"
#include "jighost/check/DumpCheck.h"
#include "jighost/check/DumpFolder.h"
#include "jighost/commands/CommonOptions.h"
#include "jighost/output/Json.h"
#include "jighost/session/BodyFile.h"
#include "jighost/text/PlainText.h"
#include "platform/Utf8Path.h"

static EXIT_CODE Verify(const HOST& host, const std::string& folder);

void AddVerifyCommand(Command& program, HOST& host) {
    Command command = program.AddCommand(
        "verify", "Checks a dump's files against the catalogue, and against a body's saved values");
    const auto pFolder = std::make_shared<std::string>();
    command.AddArgument("folder", *pFolder, "The dump's folder");
    command.AddOption(
        "--body", host.session.bodyPath, "The file of the body that was dumped", "FILE");
    AddJsonOption(command, host);
    command.SetFooter(
        "Examples:\n"
        "  jighost verify adjust\n"
        "  jighost verify adjust --body desk.yaml\n"
        "Ends with 5 if anything is missing, too long, too short, foreign or different.");
    command.SetWork([&host, pFolder] { host.exitCode = Verify(host, *pFolder); });
}

static void ShowFindings(const Findings& findings, bool bBody) {
    for (const FINDING& finding : findings) {
        std::cout << std::left << std::setw(9) << finding.kind << std::setw(14)
                  << PlainText(finding.file) << std::setw(34) << finding.property << finding.text
                  << '\n';
    }
    std::cout << PROPERTY_COUNT << " files expected, ";
    if (findings.empty()) {
        std::cout
            << (bBody ? "all as they should be\n"
                      : "all there with their sizes; their bytes were not looked at\n");
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
    CheckDumpFolder(PathOf(folder));
    const bool bBody = !host.session.bodyPath.empty();
    if (bBody) {
        SimulatedBody::Reset();
        LoadBody(host.session.bodyPath);
    }
    const Findings findings = CheckDump(PathOf(folder), bBody);
    host.bJson ? ShowFindingsAsJson(findings) : ShowFindings(findings, bBody);
    return findings.empty() ? EXIT_OK : EXIT_UNEXPECTED;
}
