// The recorder put into a host's folder and taken out again.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

struct INSTALLATION {
    std::filesystem::path folder;
    std::filesystem::path into;  ///< for recordings; empty for the folder "recordings" in it
    std::uint64_t keep = 0;      ///< bytes that they may have; 0 for any
};

/// Is told each thing that was done, for people.
using OnStep = std::function<void(const std::string& text)>;

/// All of it or, whatever fails, nothing: what was done is undone. Throws HostError; EXIT_NO_MODULE
/// if module or camera link can't serve, EXIT_WRONG_USE for a folder that does not fit.
void InstallRecorder(const INSTALLATION& installation, const OnStep& onStep);

/// Puts the libraries back, however far an installation or a removal had come. A library that has
/// come into a place since is left there: gives false then. The recordings stay.
bool RemoveRecorder(const std::filesystem::path& folder, const OnStep& onStep);
