// How the body says no. All codes are odd, as those of a failing event's result word are.
#pragma once

#include <cstdint>
#include <string>

#include "link/CException.h"

namespace SimulatedBody {

enum REFUSAL : std::int32_t {
    REFUSED_PROPERTY = 0x1001,   ///< no such property
    REFUSED_SIZE = 0x1003,       ///< not the property's size, or more than a block may have
    REFUSED_EVENT = 0x1005,      ///< no such event
    REFUSED_PARAMETER = 0x1007,  ///< an event's parameters are not of its form
    REFUSED_ORDER = 0x1009,      ///< something must come first
    REFUSED_RANGE = 0x100B,      ///< no such address, bank or function
    REFUSED_POINTER = 0x100D,    ///< null where memory is needed
};

[[noreturn]] inline void Refuse(std::string message, REFUSAL code) {
    throw new CException(std::move(message), code);
}

inline void RequirePointer(const void* pMemory, const char* pszMessage) {
    if (pMemory == nullptr) {
        Refuse(pszMessage, REFUSED_POINTER);
    }
}

}  // namespace SimulatedBody
