// The operations of the module, each behind an entry of its own, by which a call tells its name.
#pragma once

#include <cstdint>

#include "frame/Registration.h"

namespace Recorder {

class OperationWatch;

/// Where operations are told from now on; null for nowhere.
void WatchOperations(OperationWatch* pWatch);

/// The entry for an operation that the module registers, the same one for the same name and
/// procedure each time. `size` are the bytes of its record, 0 where the module tells none. Once
/// there are no entries left it is the procedure itself.
EVENT_PROC EntryFor(const char* pszName, EVENT_PROC procedure, std::int32_t size);

}  // namespace Recorder
