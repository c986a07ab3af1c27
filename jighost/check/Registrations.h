// What a module registers, held against what it should.
#pragma once

#include <string>
#include <vector>

#include "jighost/session/Module.h"

/// Names that are missing, too many or out of their order, and sizes and directions that are not as
/// they should be: ", missing: ..." and so on; empty if there is no fault.
std::string RegistrationFaults(const std::vector<REGISTERED_OPERATION>& operations);
