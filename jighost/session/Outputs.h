// The files of a run, none of which may be written in place of another one.
#pragma once

#include <string>
#include <vector>

struct NAMED_FILE {
    std::string name;  ///< as people know it, such as "--record"
    std::string path;
};

/// Throws EXIT_WRONG_USE if an output is the same file as an input or as another output, under
/// whatever path. Devices and pipes may be shared.
void CheckOutputs(const std::vector<NAMED_FILE>& outputs, const std::vector<NAMED_FILE>& inputs);
