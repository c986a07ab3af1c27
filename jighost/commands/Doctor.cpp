// jighost doctor: whether a module can serve, and if not, why.
#include "jighost/check/Doctor.h"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <memory>

#include "jighost/check/Libraries.h"
#include "jighost/commands/CommonOptions.h"
#include "jighost/output/Json.h"
#include "jighost/session/Module.h"
#include "jighost/text/PlainText.h"

struct DOCTOR_OPTIONS {
    std::string path;
    bool bInProcess = false;
};

static EXIT_CODE Examine(const HOST& host, const std::string& path);
static EXIT_CODE ExamineInProcess(const HOST& host, const std::string& path);

void AddDoctorCommand(Command& program, HOST& host) {
    Command command = program.AddCommand(
        "doctor",
        "Tells whether a module and a camera link can serve in the current directory, and why "
        "not");
    const auto pOptions = std::make_shared<DOCTOR_OPTIONS>();
    command.AddOption("module", pOptions->path, "The module's file; else jighost's own");
    AddLinkOption(command, host);
    command.AddFlag(
        "--in-process", pOptions->bInProcess,
        "Loads the libraries in this very process, for a debugger; a broken one may end it");
    AddJsonOption(command, host);
    command.SetFooter(
        "Examples:\n"
        "  jighost doctor\n"
        "  jighost doctor /opt/line/TuneBench.t460.so\n"
        "  jighost doctor --link /opt/line/libBODYLNK.so\n"
        "Ends with 3 if any check fails.");
    command.SetWork([&host, pOptions] {
        host.exitCode = pOptions->bInProcess ? ExamineInProcess(host, pOptions->path)
                                             : Examine(host, pOptions->path);
    });
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

static EXIT_CODE ExamineInProcess(const HOST& host, const std::string& path) {
    bool bGood = true;
    ExamineLibraries(FullModulePath(path), host.session.linkPath, [&](const CHECK& check) {
        bGood = bGood && check.state == STATE::OK;
        std::cout << CheckLine(check) << std::endl;
    });
    return bGood ? EXIT_OK : EXIT_NO_MODULE;
}
