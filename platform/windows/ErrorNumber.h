// The system's error codes as the numbers that the rest of the project knows, whose words are the
// same on all systems.
#pragma once

#include <cerrno>
#include <system_error>

#include "platform/Platform.h"

/// EIO for a code that has no number of its own.
inline int ErrorNumber(DWORD code) {
    const std::error_condition known =
        std::system_category().default_error_condition(static_cast<int>(code));
    return known.category() == std::generic_category() ? known.value() : EIO;
}
