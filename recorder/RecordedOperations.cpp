// An operation has no place for a context: each entry is a function of its own.
#include "recorder/RecordedOperations.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <utility>

#include "recorder/OperationWatch.h"

namespace Recorder {

namespace {

// The module has 131 operations.
const std::size_t ENTRY_COUNT = 256;

struct OPERATION {
    const char* pszName = nullptr;  // the module's own, as long as it is loaded
    EVENT_PROC procedure = nullptr;
    std::uint32_t recordSize = 0;
};

std::array<OPERATION, ENTRY_COUNT> s_Operations;
OperationWatch* s_pWatch = nullptr;

std::int32_t Run(const OPERATION& operation, void* pRecord) noexcept {
    if (s_pWatch == nullptr) {
        return operation.procedure(pRecord);
    }
    const ARGUMENT argument = {pRecord, operation.recordSize};
    RUNNING_OPERATION running;
    s_pWatch->Begin(running, operation.pszName, argument);
    const std::int32_t result = operation.procedure(pRecord);
    s_pWatch->End(running, result, argument);
    return result;
}

template <std::size_t INDEX>
std::int32_t Entry(void* pRecord) noexcept {
    return Run(s_Operations[INDEX], pRecord);
}

template <std::size_t... INDICES>
constexpr std::array<EVENT_PROC, ENTRY_COUNT> AllEntries(
    std::index_sequence<INDICES...> /*indices*/) {
    return {&Entry<INDICES>...};
}

constexpr auto ENTRIES = AllEntries(std::make_index_sequence<ENTRY_COUNT>());

std::uint32_t RecordSize(const char* pszName, std::int32_t size) {
    if (size > 0) {
        return static_cast<std::uint32_t>(size);
    }
    return s_pWatch != nullptr ? s_pWatch->RecordSize(pszName) : 0;
}

}  // namespace

void WatchOperations(OperationWatch* pWatch) {
    s_pWatch = pWatch;
}

EVENT_PROC EntryFor(const char* pszName, EVENT_PROC procedure, std::int32_t size) {
    for (std::size_t i = 0; i < ENTRY_COUNT; ++i) {
        OPERATION& operation = s_Operations[i];
        const bool bKnown =
            operation.procedure == procedure && std::strcmp(operation.pszName, pszName) == 0;
        if (bKnown || operation.procedure == nullptr) {
            operation = {pszName, procedure, RecordSize(pszName, size)};
            return ENTRIES[i];
        }
    }
    return procedure;
}

}  // namespace Recorder
