// The checks that throw.
#include "frame/Result.h"

#include "link/SharedMemory.h"

void Fail(std::string_view message, std::int32_t code) {
    throw new CException(std::string(message), code);
}

void CheckPointer(const void* pointer, std::string_view name) {
    if (pointer == nullptr) {
        Fail(std::string("[VALU] ").append(name), RESULT_INVALID_PARAMETER);
    }
}

void CheckEvent(std::int32_t result, std::string_view name) {
    if (IsFailure(result)) {
        Fail(std::string("[EVNT] ").append(name), result);
    }
}

void CheckNested(std::int32_t result, std::string_view logName) {
    if (IsFailure(result)) {
        Fail(std::string("[FUNC] ").append(logName), result);
    }
}

void CheckSharedMemory(const CSharedMemory& block) {
    if (block.GetpSharedMemory() == nullptr) {
        Fail(std::string("[WAPI] ") + FailedSharedMemoryCall(), RESULT_SYSTEM_ERROR);
    }
}
