// What was looked at, and what was found.
#pragma once

#include <string>

enum class STATE { OK, FAILED, NOT_TESTED };

struct CHECK {
    std::string name;
    STATE state = STATE::FAILED;
    std::string text;  ///< what was found
};
