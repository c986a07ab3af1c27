// From the system's list of users.
#include "platform/User.h"

#include <pwd.h>
#include <unistd.h>

#include <array>

std::string UserName() {
    const uid_t user = geteuid();
    std::array<char, 16384> texts{};
    passwd entry = {};
    passwd* pFound = nullptr;
    getpwuid_r(user, &entry, texts.data(), texts.size(), &pFound);
    return pFound == nullptr ? std::to_string(user) : pFound->pw_name;
}
