// What the host finds in the module by name.
#pragma once

#include <cstdint>

#include "frame/EventProcTable.h"
#include "frame/Registration.h"
#include "platform/Export.h"
#include "platform/Platform.h"

/// Copies the module's own event procedures into the host's table of HASH_BUCKETS chain heads;
/// there are none. The table is touched only for nodes that the module has.
extern "C" MODULE_API std::int32_t GetEventProcList(EVENT_PROC_T** ppTable) noexcept;

/// Calls the callback, which must be valid, once for each operation. May be called again, with the
/// same effect. Gives a result code.
extern "C" MODULE_API std::int32_t RegisterEventProcList(
    EVENT_PROC_REGISTER_FUNC callback) noexcept;

/// The module has no initialisation functions: flushes its log and gives 0. Exported under the name
/// "_RegisterInitializeFuncList@4" alone.
extern "C" MODULE_API_RENAMED std::int32_t WINAPI
RegisterInitializeFuncList(void* pUnused) noexcept;
