// All of operator new stands in the C++ run-time library, which takes its memory by malloc; the
// module calls calloc itself.
#include <cstdlib>
#include <optional>

#include "tests/faults/Shortage.h"
#include "tests/support/windows/ReplacedImport.h"

namespace {

void* AllocateToThrow(std::size_t size) {
    return CountAllocation(true) ? nullptr : std::malloc(size);
}

void* AllocateZeros(std::size_t count, std::size_t size) {
    return CountAllocation(false) ? nullptr : std::calloc(count, size);
}

struct WATCH {
    WATCH() {
        if (GetModuleHandleA(MODULE_FILE) != nullptr) {
            zeros.emplace(MODULE_FILE, "calloc", AllocateZeros);
        }
    }

    ReplacedImport toThrow{"libstdc++-6.dll", "malloc", AllocateToThrow};
    std::optional<ReplacedImport> zeros;
};

}  // namespace

std::shared_ptr<void> WatchAllocations() {
    return std::make_shared<WATCH>();
}
