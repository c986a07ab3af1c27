// Whether a module, and a camera link, can serve in the current directory, and if not, why.
#pragma once

#include <functional>
#include <string>
#include <vector>

enum class STATE { OK, FAILED, NOT_TESTED };

struct CHECK {
    const char* name;
    STATE state;
    std::string text;  ///< what was found
};

/// Tells each check as soon as it is made: a broken library may end the program when it is loaded.
/// With an empty path of a link the module is looked at on the simulated body.
std::vector<CHECK> CheckAll(
    const std::string& path, const std::string& linkPath,
    const std::function<void(const CHECK&)>& onCheck);
