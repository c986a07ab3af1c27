// What a person asks of a session.
#pragma once

#include <string>
#include <vector>

struct SESSION_OPTIONS {
    std::string modulePath;           ///< from --module; empty for the module beside this program
    std::string bodyPath;             ///< from --body; empty for a factory-new body
    std::string linkPath;             ///< from --link; empty for the simulated body
    bool bTrace = false;              ///< from --trace ...
    std::string tracePath;            ///< ... and its file; empty for standard error
    std::vector<std::string> faults;  ///< from --fault, as written

    /// Whether the trace goes where talk goes.
    bool IsTraceShown() const { return bTrace && tracePath.empty(); }
};
