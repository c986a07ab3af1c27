// How runs take turns where they can't have named blocks of their own.
#pragma once

#include "platform/Platform.h"

/// Holds the turn until the process ends, in whatever way.
inline void TakeOwnTurn() {
    WaitForSingleObject(CreateMutexA(nullptr, FALSE, "TUNEBENCH_TURN"), INFINITE);
}
