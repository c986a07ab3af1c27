// How the host ends, and what carries a failure to that end.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

#include "jighost/text/PlainText.h"

/// The program's exit codes. Whatever else happened, a program that a signal ended says so.
enum EXIT_CODE : int {
    EXIT_OK = 0,
    EXIT_HOST_ERROR = 1,        ///< the host itself failed, such as for want of memory
    EXIT_WRONG_USE = 2,         ///< wrong options, names or values, also those in a file
    EXIT_NO_MODULE = 3,         ///< the module or the camera link can't be used
    EXIT_OPERATION_FAILED = 4,  ///< an operation's result is a failure that nobody expected
    EXIT_UNEXPECTED = 5,        ///< a result or a value is not the one that was expected
    EXIT_BY_SIGNAL = 128,       ///< and the signal's number, as shells count ...
    EXIT_INTERRUPTED = 130,     ///< ... which is this for Ctrl-C
};

/// Ends a command with its text on standard error and the exit code.
class HostError : public std::runtime_error {
  public:
    /// The text becomes one line, as PlainText gives it: parts of it may come from anywhere.
    HostError(EXIT_CODE exit, std::string_view text)
        : std::runtime_error(PlainText(text)), exitCode(exit) {}
    /// The lines of several errors, each as what() gives it.
    struct LINES {
        std::string text;
    };
    HostError(EXIT_CODE exit, const LINES& lines)
        : std::runtime_error(lines.text), exitCode(exit) {}

    EXIT_CODE exitCode;
};

/// Does `work`; what the system has against it ends the command with this code.
template <class Work>
auto WithExitCode(EXIT_CODE exitCode, const Work& work) {
    try {
        return work();
    } catch (const std::system_error& e) {
        throw HostError(exitCode, e.what());
    }
}
