// The checks of a module and of a camera link that load them: a broken one may end the program.
#pragma once

#include <functional>
#include <string>

#include "jighost/check/Check.h"

/// Tells each check as soon as it is made. With an empty path of a link the module is looked at on
/// the simulated body.
void ExamineLibraries(
    const std::string& path, const std::string& linkPath,
    const std::function<void(const CHECK&)>& onCheck);
