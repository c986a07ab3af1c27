// All operations of the module in the order of their registration: this folder alone knows every
// feature.
#pragma once

#include "frame/Registration.h"

/// Hands all operations of the module to the host, and fills the property hash on the way.
void RegisterAllEventProcs(EVENT_PROC_REGISTER_FUNC callback);
