// What a person asks of a session.
#pragma once

#include <string>
#include <vector>

#include "jighost/session/HeldFolder.h"
#include "jighost/session/Outputs.h"

struct SESSION_OPTIONS {
    std::string modulePath;           ///< from --module; empty for jighost's own
    std::string bodyPath;             ///< from --body; empty for a factory-new body
    std::string linkPath;             ///< from --link; empty for the simulated body
    bool bTrace = false;              ///< from --trace ...
    std::string tracePath;            ///< ... and its file; empty for standard error
    std::vector<std::string> faults;  ///< from --fault, as written
    bool bTakeFolder = false;         ///< from --take-folder: stands above foreignFolder

    // What a command adds to that.

    std::string folderText;  ///< where dumps go, from FolderBlockText; empty if there are none
    FOREIGN_FOLDER foreignFolder = FOREIGN_FOLDER::REFUSED;
    std::vector<NAMED_FILE> inputs;   ///< other files that the run reads ...
    std::vector<NAMED_FILE> outputs;  ///< ... and writes

    /// Whether the trace goes where talk goes.
    bool IsTraceShown() const { return bTrace && tracePath.empty(); }
};
