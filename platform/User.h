// Who uses the machine.
#pragma once

#include <string>

/// The name by which the system knows the user of this process; its number where it has no name.
std::string UserName();
