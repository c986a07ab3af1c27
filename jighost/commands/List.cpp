// jighost list: the operations that the module registers.
#include <iomanip>
#include <iostream>

#include "jighost/commands/CommonOptions.h"
#include "jighost/operations/OperationTable.h"
#include "jighost/output/Json.h"
#include "jighost/session/Module.h"

static void List(const HOST& host);

void AddListCommand(Command& program, HOST& host) {
    Command command = program.AddCommand("list", "Lists all operations that the module registers");
    AddModuleOption(command, host);
    AddJsonOption(command, host);
    command.SetFooter("Examples:\n  jighost list\n  jighost list --json");
    command.SetWork([&host] { List(host); });
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

static void WriteRow(
    const std::string& number, const std::string& name, const std::string& size,
    const std::string& direction, const std::string& description) {
    std::cout << std::right << std::setw(3) << number << "  " << std::left << std::setw(36) << name
              << std::right << std::setw(4) << size << "  " << std::left << std::setw(19)
              << direction << "  " << description << '\n';
}

static void ListJson(const Module& module) {
    Json operations = Json::array();
    for (const REGISTERED_OPERATION& operation : module.Operations()) {
        const OPERATION_INFO* pInfo = FindOperation(operation.name);
        operations.push_back(
            {{"name", operation.name},
             {"size", operation.size},
             {"direction", operation.direction},
             {"description", pInfo == nullptr ? "" : pInfo->description}});
    }
    WriteJson(std::cout, {{"format", JSON_FORMAT}, {"operations", operations}});
}

static void ListText(const Module& module) {
    WriteRow("no", "name", "size", "direction", "what it does");
    int number = 0;
    for (const REGISTERED_OPERATION& operation : module.Operations()) {
        const OPERATION_INFO* pInfo = FindOperation(operation.name);
        WriteRow(
            std::to_string(++number), operation.name, std::to_string(operation.size),
            DirectionName(operation.direction), pInfo == nullptr ? "" : pInfo->description);
    }
}

static void List(const HOST& host) {
    const Module module(host.session.modulePath);
    host.bJson ? ListJson(module) : ListText(module);
}
