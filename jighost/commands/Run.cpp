// jighost run: one operation on one record.
#include <iostream>
#include <memory>

#include "frame/Result.h"
#include "jighost/commands/CommonOptions.h"
#include "jighost/operations/ResultName.h"
#include "jighost/output/Complaint.h"
#include "jighost/output/Json.h"
#include "jighost/session/RunJson.h"
#include "jighost/session/Session.h"

struct RUN_OPTIONS {
    std::string operation;
    std::vector<std::string> fields;  // "Name=value"
    std::string hex;
};

static EXIT_CODE Run(const HOST& host, const RUN_OPTIONS& options);

void AddRunCommand(Command& program, HOST& host) {
    Command command = program.AddCommand(
        "run", "Runs one operation and shows the record that came back and the result");
    const auto pOptions = std::make_shared<RUN_OPTIONS>();
    command.AddArgument("operation", pOptions->operation, "Name of the operation");
    command.AddRest(
        "fields", pOptions->fields, "Fields of its record; the others are zero", "FIELD=VALUE");
    command.AddOption("--hex", pOptions->hex, "The record's bytes, before any fields", "BYTES");
    AddSessionOptions(command, host);
    AddJsonOption(command, host);
    command.SetFooter(
        "Examples:\n"
        "  jighost run GetBodyID --json\n"
        "  jighost run SetBodyID ManufactureMonth=1507 CodePair=42 SerialNo=12345\n"
        "  jighost run SetABoardEepromData Address=10 Count=1 'Data[10]=0x0a3c'\n"
        "  jighost run SetTimeZone --hex 01000000 --body desk.yaml\n"
        "  jighost run SetFilePrefix --trace\n"
        "  jighost run SetFilePrefix --trace prefix.jsonl --fault SetFilePrefix:2=0x2001\n"
        "  jighost run TurnOffDisplay --fault FactDisp_TurnOffDisplay:word=3\n"
        "BoardInf.ini is taken from the current directory, or else jighost's sample. A dump\n"
        "without a folder block goes to the current directory.");
    command.SetWork([&host, pOptions] { host.exitCode = Run(host, *pOptions); });
}

static FIELD_VALUE ParseFieldArgument(const OPERATION_INFO& info, const std::string& argument) {
    const std::size_t equals = argument.find('=');
    if (equals == std::string::npos) {
        throw HostError(
            EXIT_WRONG_USE,
            std::string(info.name) + ": expected Field=value, got '" + argument + "'");
    }
    return {argument.substr(0, equals), argument.substr(equals + 1)};
}

static RecordBytes BuildRecord(const OPERATION_INFO& info, const RUN_OPTIONS& options) {
    CheckRecordGiven(info, !options.fields.empty() || !options.hex.empty());
    RecordBytes bytes = NewRecord(*info.record);
    if (!options.hex.empty()) {
        SetHex(info.name, *info.record, bytes, options.hex);
    }
    std::vector<FIELD_VALUE> fields;
    for (const std::string& argument : options.fields) {
        fields.push_back(ParseFieldArgument(info, argument));
    }
    SetFields(info.name, *info.record, bytes, fields);
    return bytes;
}

static void ShowRun(const HOST& host, const OPERATION_RUN& run) {
    if (host.bJson) {
        Json json = {{"format", JSON_FORMAT}};
        json.update(RunJson(run));
        WriteJson(std::cout, json);
        return;
    }
    ShowRecord(std::cout, *run.info->record, run.record);
    std::cout << run.info->name << ": " << ResultText(run.result) << '\n';
}

static EXIT_CODE Judge(const OPERATION_RUN& run) {
    if (!run.folderProblem.empty()) {
        Complain(run.folderProblem);
        return EXIT_UNEXPECTED;
    }
    if (IsFailure(run.result)) {
        Complain(std::string(run.info->name) + " failed: " + RunError(run));
        return EXIT_OPERATION_FAILED;
    }
    return EXIT_OK;
}

static EXIT_CODE RunAndShow(
    const HOST& host, const SESSION_OPTIONS& options, const OPERATION_INFO& info,
    RecordBytes bytes) {
    Session session(options);
    const OPERATION_RUN run = session.Run(info, std::move(bytes));
    const bool bWritten = session.Finish();
    ShowRun(host, run);
    return session.Conclude(Judge(run), bWritten);
}

static EXIT_CODE Run(const HOST& host, const RUN_OPTIONS& options) {
    const OPERATION_INFO& info = KnownOperation(options.operation);
    RecordBytes bytes = BuildRecord(info, options);
    SESSION_OPTIONS session = host.session;
    if (IsDump(info)) {
        session.folderText = FolderBlockText(".");
        session.foreignFolder = FOREIGN_FOLDER::USED;
    }
    return RunAndShow(host, session, info, std::move(bytes));
}
