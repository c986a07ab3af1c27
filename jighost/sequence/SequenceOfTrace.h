// A sequence with the operations and records of a recording: what a line does becomes a script that
// a person can edit.
#pragma once

#include <functional>
#include <ostream>
#include <string>

/// Writes it as it reads, in one pass. `tell` gets a line for each thing of the recording that the
/// sequence lacks. Throws EXIT_WRONG_USE for a file that is no trace, or has no operation.
void WriteSequenceOfTrace(
    std::ostream& out, const std::string& path,
    const std::function<void(const std::string& text)>& tell);
