// Whether a module, and a camera link, can serve in the current directory, and if not, why.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "jighost/check/Check.h"

/// Tells each check as soon as it is made. What loads a library runs in a process of its own with a
/// time limit, so that a library that ends its program or never comes back is told too. With an
/// empty path of a link the module is looked at on the simulated body.
std::vector<CHECK> CheckAll(
    const std::string& path, const std::string& linkPath,
    const std::function<void(const CHECK&)>& onCheck);

/// The checks of the two libraries alone.
std::vector<CHECK> CheckModuleAndLink(const std::string& path, const std::string& linkPath);

/// How that process tells a check on its standard output, where the module may print too.
std::string CheckLine(const CHECK& check);
