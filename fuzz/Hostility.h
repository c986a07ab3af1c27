// What an input can turn against an operation: all that comes from the camera, from files and from
// other processes.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "fuzz/Input.h"
#include "jighost/session/FolderBlock.h"

enum HOSTILE : unsigned {
    HOSTILE_RECORD = 1,  ///< what the host's record holds; its size stays
    HOSTILE_PROPERTIES = 2,
    HOSTILE_EVENTS = 4,
    HOSTILE_SIZES = 8,
    HOSTILE_INI = 16,
    HOSTILE_FOLDER = 32,
    HOSTILE_FAULT = 64,
    HOSTILE_MEMORY = 128,
};

/// What a body is asked for by an operation that goes well.
struct ASKED {
    std::vector<Link::CALL> properties;  ///< that it reads, each once
    std::vector<std::string> events;     ///< that it runs, each once
};

ASKED AskedBy(std::span<const Link::CALL> calls);

/// A factory-new body, a good INI file, no folder for dumps.
void ResetSurroundings(const FolderBlock& folder);

/// Sets up what the HOSTILE bits name, each with what it takes from the input; HOSTILE_RECORD is
/// the caller's.
void SetUpHostility(unsigned hostile, const ASKED& asked, const FolderBlock& folder, Input& input);
