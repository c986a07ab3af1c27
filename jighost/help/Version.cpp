// The build tells this file alone what it is, so that a commit compiles no other one anew.
#include "jighost/help/Version.h"

#include <climits>

#include <Commit.h>

std::string Version() {
    return TUNEBENCH_VERSION;
}

std::string VersionWithCommit() {
    return Version() + " (" + COMMIT + ')';
}

std::string VersionText() {
    return "jighost " + Version() + "\ncommit " + COMMIT + "\nbuild " + TUNEBENCH_BUILD + ", " +
           std::to_string(CHAR_BIT * sizeof(void*)) + " bits";
}
