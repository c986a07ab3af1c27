// jighost doctor: whether a module can serve, and if not, why.
#include "jighost/check/Doctor.h"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <memory>

#include "jighost/commands/CommonOptions.h"
#include "jighost/output/Json.h"
#include "jighost/session/Module.h"
#include "jighost/text/PlainText.h"

static EXIT_CODE Examine(const HOST& host, const std::string& path);

void AddDoctorCommand(Command& program, HOST& host) {
    Command command = program.AddCommand(
        "doctor",
        "Tells whether a module and a camera link can serve in the current directory, and why "
        "not");
    const auto pPath = std::make_shared<std::string>();
    command.AddOption("module", *pPath, "The module's file; else the one beside jighost");
    AddLinkOption(command, host);
    AddJsonOption(command, host);
    command.SetFooter(
        "Examples:\n"
        "  jighost doctor\n"
        "  jighost doctor /opt/line/TuneBench.t460.so\n"
        "  jighost doctor --link /opt/line/libBODYLNK.so\n"
        "Ends with 3 if any check fails.");
    command.SetWork([&host, pPath] { host.exitCode = Examine(host, *pPath); });
}

static const char* StateText(STATE state) {
    switch (state) {
        case STATE::OK:
            return "ok";
        case STATE::FAILED:
            return "failed";
        default:
            return "-";
    }
}

static void ShowCheck(const CHECK& check) {
    std::cout << std::left << std::setw(8) << StateText(check.state) << std::setw(15) << check.name
              << PlainText(check.text) << std::endl;
}

static void ShowChecksAsJson(const std::vector<CHECK>& checks, bool bServes) {
    Json list = Json::array();
    for (const CHECK& check : checks) {
        list.push_back(
            {{"check", check.name}, {"state", StateText(check.state)}, {"text", check.text}});
    }
    WriteJson(std::cout, {{"format", JSON_FORMAT}, {"serves", bServes}, {"checks", list}});
}

static EXIT_CODE Examine(const HOST& host, const std::string& path) {
    const auto onCheck = [&host](const CHECK& check) {
        if (!host.bJson) {
            ShowCheck(check);
        }
    };
    const std::vector<CHECK> checks =
        CheckAll(FullModulePath(path), host.session.linkPath, onCheck);
    const bool bServes = std::all_of(
        checks.begin(), checks.end(), [](const CHECK& check) { return check.state == STATE::OK; });
    if (host.bJson) {
        ShowChecksAsJson(checks, bServes);
    }
    return bServes ? EXIT_OK : EXIT_NO_MODULE;
}
