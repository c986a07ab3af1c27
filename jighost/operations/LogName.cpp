// Which names differ, and what the module calls from where.
#include "jighost/operations/LogName.h"

#include <algorithm>
#include <iterator>
#include <set>

#include "jighost/operations/OperationTable.h"

struct NAME_PAIR {
    std::string_view first;
    std::string_view second;
};

/// Registered names, and what the log has in their place.
static constexpr NAME_PAIR OTHER_NAMES[] = {
    {"DisableAf", "DisableAF"},
    {"EnableAf", "EnableAF"},
    {"ExecuteMachineCellAccTest", "EnterMachineCellAccTest"},
    {"GetBpVersion", "GetBpFirmwareVersion"},
    {"GetEepromVersion", "GetEepromFirmwareVersion"},
    {"GetFpuVersion", "GetFpuFirmwareVersion"},
    {"GetIcuMasterVersion", "GetIcuMasterFirmwareVersion"},
    {"GetIcuSlaveVersion", "GetIcuSlaveFirmwareVersion"},
    {"GetMachineCellAccTestResultTable", "GetMachineCellAccTestResult"},
    {"GetMachineCellDispDialResultTable", "GetMachineCellDispDialResult"},
    {"GetTpuVersion", "GetTpuFirmwareVersion"},
    {"OutputColorBarChart", "_OutputColorBarChart"},
    {"TurnOffDisplay", "_TurnOffDisplay"},
    {"TurnOnDisplay", "_TurnOnDisplay"},
};

/// What runs within what. Only exports and routines with a frame of their own are no operations.
static constexpr NAME_PAIR WITHIN[] = {
    {"RegisterPropertyData", "RegisterEventProcList"},
    {"GetHash", "GetEventProcList"},
    {"GetBodyID", "SetFilePrefix"},
    {"SetOwnerName", "ClearOwnerName"},
    {"_SetArtistInfo", "ClearCopyRightInfo"},
    {"_SetCopyRighInfo", "ClearCopyRightInfo"},
    {"_GetCalendar", "GetDateTime"},
    {"_GetCalendar", "SetDateTime"},
    {"GetPropertyDataCount", "LoadPropertyData"},
    {"GetPropertyDataList", "LoadPropertyData"},
    {"GetBoardInfDLResonantFrequency", "CopyDLResonantFrequency"},
    {"SetDLResonantFrequency", "CopyDLResonantFrequency"},
    {"DebugWriteDumpMemory", "GetCameraLog"},
    {"DebugPrintDumpMemory", "GetIcuFirmwareVersion"},
    {"DebugPrintDumpMemory", "GetIcuMasterFirmwareVersion"},
    {"DebugPrintDumpMemory", "GetIcuSlaveFirmwareVersion"},
    {"DebugPrintDumpMemory", "SetBoardInfDLResonantFrequency"},
};

std::string_view LogName(std::string_view operation) {
    const auto* pOther = std::find_if(
        std::begin(OTHER_NAMES), std::end(OTHER_NAMES),
        [&](const NAME_PAIR& each) { return each.first == operation; });
    return pOther == std::end(OTHER_NAMES) ? operation : pOther->second;
}

using NameSet = std::set<std::string, std::less<>>;

static NameSet CollectNames() {
    NameSet names;
    for (const std::string& name : OperationNames()) {
        names.emplace(LogName(name));
    }
    for (const NAME_PAIR& each : WITHIN) {
        names.emplace(each.first);
        names.emplace(each.second);
    }
    return names;
}

static const NameSet& AllNames() {
    static const NameSet names = CollectNames();
    return names;
}

std::vector<std::string> LogNames() {
    return {AllNames().begin(), AllNames().end()};
}

bool IsLogName(std::string_view name) {
    return AllNames().contains(name);
}

bool RunsWithin(std::string_view inner, std::string_view outer) {
    return std::any_of(std::begin(WITHIN), std::end(WITHIN), [&](const NAME_PAIR& each) {
        return each.first == inner && each.second == outer;
    });
}
