// jighost list: the operations that the module registers, all of them or one with its record.
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <span>

#include "jighost/commands/CommonOptions.h"
#include "jighost/operations/OperationText.h"
#include "jighost/output/Json.h"
#include "jighost/session/Module.h"

static void List(const HOST& host, const std::optional<std::string>& operation);

void AddListCommand(Command& program, HOST& host) {
    Command command = program.AddCommand(
        "list", "Lists all operations that the module registers, or one with its record");
    const auto pOperation = std::make_shared<std::optional<std::string>>();
    command.AddOptionalArgument(
        "operation", *pOperation,
        "One operation: its record field by field, who fills it, and how the operation fails");
    AddModuleOption(command, host);
    AddJsonOption(command, host);
    command.SetFooter(
        "Examples:\n"
        "  jighost list\n"
        "  jighost list SetBodyID\n"
        "  jighost list --json\n"
        "With --json each operation comes with its record and fields.");
    command.SetWork([&host, pOperation] { List(host, *pOperation); });
}

static std::string DirectionName(std::int32_t direction) {
    switch (direction) {
        case EVENT_PROC_IN:
            return "EVENT_PROC_IN (0)";
        case EVENT_PROC_OUT:
            return "EVENT_PROC_OUT (1)";
        case EVENT_PROC_NONE:
            return "EVENT_PROC_NONE (3)";
        default:
            return std::to_string(direction);
    }
}

// --- All operations ---

static void WriteRow(
    const std::string& number, const std::string& name, const std::string& size,
    const std::string& direction, const std::string& description) {
    std::cout << std::right << std::setw(3) << number << "  " << std::left << std::setw(36) << name
              << std::right << std::setw(4) << size << "  " << std::left << std::setw(19)
              << direction << "  " << description << '\n';
}

static void ShowAll(const Module& module) {
    WriteRow("no", "name", "size", "direction", "what it does");
    int number = 0;
    for (const REGISTERED_OPERATION& operation : module.Operations()) {
        const OPERATION_INFO* pInfo = FindOperation(operation.name);
        WriteRow(
            std::to_string(++number), operation.name, std::to_string(operation.size),
            DirectionName(operation.direction), pInfo == nullptr ? "" : pInfo->description);
    }
}

// --- One operation ---

static const char* FilledText(RECORD_USE use) {
    switch (use) {
        case RECORD_USE::IN:
            return ", filled by the host";
        case RECORD_USE::OUT:
            return ", filled by the operation";
        case RECORD_USE::IN_OUT:
            return ", filled by the host and then by the operation";
        case RECORD_USE::NONE:
            break;
    }
    return "";
}

static const char ANY_FAILURE[] =
    "as any operation: the code of an exception of the camera link; 33 for anything else thrown";

static void WriteFact(const char* name, const std::string& text) {
    std::cout << std::left << std::setw(12) << name << text << '\n';
}

static void WriteFieldRow(
    const std::string& offset, const std::string& width, const std::string& name,
    const std::string& type, const std::string& meaning) {
    std::cout << std::right << std::setw(6) << offset << "  " << std::setw(7) << width << "  "
              << std::left << std::setw(16) << name << "  " << std::setw(21) << type << "  "
              << meaning << '\n';
}

static void ShowFields(const RECORD& record) {
    std::cout << '\n';
    WriteFieldRow("offset", "width", "field", "type", "unit or meaning");
    for (const FIELD& field : record.fields) {
        WriteFieldRow(
            std::to_string(field.offset), WidthText(field), IndexedName(field),
            TypeText(field.kind), field.meaning);
    }
}

static void ShowOne(const REGISTERED_OPERATION& operation, const OPERATION_INFO& info) {
    const std::string record = std::string(info.record->name) + ", " + SizeText(*info.record);
    const std::string failures = info.failures;
    WriteFact("name", info.name);
    WriteFact("group", GroupName(info));
    WriteFact("does", info.description);
    WriteFact(
        "registered",
        std::to_string(operation.size) + " bytes, " + DirectionName(operation.direction));
    WriteFact("record", info.use == RECORD_USE::NONE ? "-" : record + FilledText(info.use));
    if (!failures.empty()) {
        WriteFact("fails", failures);
    }
    WriteFact(failures.empty() ? "fails" : "", ANY_FAILURE);
    if (info.use != RECORD_USE::NONE) {
        ShowFields(*info.record);
    }
}

// --- As JSON ---

static Json RecordFormJson(const RECORD& record) {
    Json fields = Json::array();
    for (const FIELD& field : record.fields) {
        fields.push_back(
            {{"name", field.name},
             {"offset", field.offset},
             {"width", field.width},
             {"count", field.count},
             {"type", TypeText(field.kind)},
             {"meaning", field.meaning}});
    }
    return {
        {"name", record.name},
        {"size", record.size},
        {"any_length", record.bAnyLength},
        {"fields", fields}};
}

static Json OperationJson(const REGISTERED_OPERATION& operation) {
    const OPERATION_INFO* pInfo = FindOperation(operation.name);
    Json json = {
        {"name", operation.name},
        {"size", operation.size},
        {"direction", operation.direction},
        {"description", pInfo == nullptr ? "" : pInfo->description}};
    if (pInfo != nullptr) {
        const bool bRecord = pInfo->use != RECORD_USE::NONE;
        json["group"] = GroupName(*pInfo);
        json["use"] = UseText(pInfo->use);
        json["record"] = bRecord ? RecordFormJson(*pInfo->record) : Json();
        json["failures"] = pInfo->failures;
    }
    return json;
}

static void ShowAsJson(std::span<const REGISTERED_OPERATION> operations) {
    Json list = Json::array();
    for (const REGISTERED_OPERATION& operation : operations) {
        list.push_back(OperationJson(operation));
    }
    WriteJson(std::cout, {{"format", JSON_FORMAT}, {"operations", list}});
}

static void ListOne(const HOST& host, const std::string& name) {
    const OPERATION_INFO& info = KnownOperation(name);
    const Module module(host.session.modulePath);
    const REGISTERED_OPERATION& operation = module.Find(name);
    host.bJson ? ShowAsJson({&operation, 1}) : ShowOne(operation, info);
}

static void ListAll(const HOST& host) {
    const Module module(host.session.modulePath);
    host.bJson ? ShowAsJson(module.Operations()) : ShowAll(module);
}

static void List(const HOST& host, const std::optional<std::string>& operation) {
    operation ? ListOne(host, *operation) : ListAll(host);
}
