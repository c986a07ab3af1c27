// The names of the table of operations, and the few that describe a block.
#include "jighost/check/Registrations.h"

#include <algorithm>
#include <iterator>

#include "jighost/operations/OperationTable.h"

struct DESCRIBED_BLOCK {
    std::string_view name;
    std::int32_t size;
    std::int32_t direction;
};

/// All others are registered with no size and EVENT_PROC_NONE.
static constexpr DESCRIBED_BLOCK DESCRIBED_BLOCKS[] = {
    {"GetDigitalParaAdjData", 8, EVENT_PROC_OUT},
    {"SetBodyID", 20, EVENT_PROC_IN},
    {"GetBodyID", 20, EVENT_PROC_OUT},
    {"SetSensorNumber", 16, EVENT_PROC_IN},
    {"GetSensorNumber", 16, EVENT_PROC_OUT},
    {"OverwriteMachineCellDispDialResult", 4, EVENT_PROC_IN},
    {"GetMachineCellDispDialResult", 4, EVENT_PROC_OUT},
    {"GetMachineCellAccTestResult", 4, EVENT_PROC_OUT},
    {"GetMachineCellSDialTestResult", 4, EVENT_PROC_OUT},
    {"GetMachineCellDispDialResultTable", 128, EVENT_PROC_OUT},
    {"GetMachineCellAccTestResultTable", 96, EVENT_PROC_OUT},
    {"SetSoundVolume", 4, EVENT_PROC_IN},
};

static DESCRIBED_BLOCK ExpectedBlock(std::string_view name) {
    const auto* pFound = std::find_if(
        std::begin(DESCRIBED_BLOCKS), std::end(DESCRIBED_BLOCKS),
        [&](const DESCRIBED_BLOCK& block) { return block.name == name; });
    return pFound == std::end(DESCRIBED_BLOCKS) ? DESCRIBED_BLOCK{name, 0, EVENT_PROC_NONE}
                                                : *pFound;
}

/// The sorted names of `from` that `without` has not, or has not as often, such as "A, B".
static std::string Surplus(
    const std::vector<std::string>& from, const std::vector<std::string>& without) {
    std::vector<std::string> surplus;
    std::set_difference(
        from.begin(), from.end(), without.begin(), without.end(), std::back_inserter(surplus));
    std::string list;
    for (const std::string& name : surplus) {
        list.append(list.empty() ? "" : ", ").append(name);
    }
    return list;
}

static std::string NameFaults(
    std::vector<std::string> expected, std::vector<std::string> registered) {
    if (expected == registered) {
        return "";
    }
    std::sort(expected.begin(), expected.end());
    std::sort(registered.begin(), registered.end());
    const std::string missing = Surplus(expected, registered);
    const std::string foreign = Surplus(registered, expected);
    if (missing.empty() && foreign.empty()) {
        return ", in another order than expected";
    }
    return (missing.empty() ? "" : ", missing: " + missing) +
           (foreign.empty() ? "" : ", too many: " + foreign);
}

/// Such as ", GetBodyID with size 20 and direction 0 in place of 20 and 1".
static std::string BlockFault(const REGISTERED_OPERATION& operation) {
    const DESCRIBED_BLOCK expected = ExpectedBlock(operation.name);
    if (operation.size == expected.size && operation.direction == expected.direction) {
        return "";
    }
    return std::string(", ") + operation.name + " with size " + std::to_string(operation.size) +
           " and direction " + std::to_string(operation.direction) + " in place of " +
           std::to_string(expected.size) + " and " + std::to_string(expected.direction);
}

std::string RegistrationFaults(const std::vector<REGISTERED_OPERATION>& operations) {
    std::vector<std::string> names;
    std::string blockFaults;
    for (const REGISTERED_OPERATION& operation : operations) {
        names.emplace_back(operation.name);
        blockFaults += BlockFault(operation);
    }
    return NameFaults(OperationNames(), names) + blockFaults;
}
