// Which allocation fails; how one is made to fail is the system's matter.
#include "tests/faults/Shortage.h"

namespace {

struct ALLOCATIONS {
    SHORTAGE shortage = SHORTAGE::NONE;
    std::uint32_t count = 0;      // since the shortage was asked for
    std::uint32_t firstFail = 0;  // the first one that fails, from 1
    bool bFailed = false;
    bool bThrew = false;  // the first one that failed was to throw
};

ALLOCATIONS s_Allocations;

bool IsToFail() {
    if (!Shortage::IsUnderWay()) {
        return false;
    }
    ++s_Allocations.count;
    return s_Allocations.shortage == SHORTAGE::ONCE
               ? s_Allocations.count == s_Allocations.firstFail
               : s_Allocations.count >= s_Allocations.firstFail;
}

}  // namespace

bool CountAllocation(bool bThrows) {
    const bool bFails = IsToFail();
    if (bFails && !s_Allocations.bFailed) {
        s_Allocations.bFailed = true;
        s_Allocations.bThrew = bThrows;
    }
    return bFails;
}

Shortage::Shortage(SHORTAGE shortage, std::uint32_t n) : m_pWatch(WatchAllocations()) {
    s_Allocations = {.shortage = shortage, .firstFail = n};
}

Shortage::~Shortage() {
    s_Allocations.shortage = SHORTAGE::NONE;
}

bool Shortage::IsUnderWay() {
    return s_Allocations.shortage != SHORTAGE::NONE;
}

bool Shortage::HasFailed() {
    return s_Allocations.bFailed;
}

bool Shortage::HasThrown() {
    return s_Allocations.bThrew;
}
