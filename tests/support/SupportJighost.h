// jighost run as a program of its own, beside the tests.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "platform/Process.h"
#include "tests/support/Support.h"

/// The program's file.
std::string JighostFile();

struct JIGHOST_RUN {
    int exitCode = 0;
    std::string output;  ///< standard output, each line with its end
    std::string errors;  ///< standard error
};

/// Runs a program in the current directory to its end; the file errors.txt there is its standard
/// error.
JIGHOST_RUN RunProgram(const std::string& program, const std::vector<std::string>& arguments);
JIGHOST_RUN RunJighost(const std::vector<std::string>& arguments);

/// The words of a line; one with blanks in it, or an empty one, stands in quotation marks.
std::vector<std::string> Words(const std::string& line);
/// As RunJighost, by these.
JIGHOST_RUN RunLine(const std::string& line);
/// The same, of a run that must end with this exit code and tell this on standard error.
JIGHOST_RUN RunTo(int exitCode, const std::string& line, const std::string& error = "");

/// Starts such runs at one moment and waits for all of them.
std::vector<JIGHOST_RUN> RunAtOnce(const std::vector<std::string>& lines);

/// Whether it comes true before a machine would have to be taken for dead.
bool ComesTrue(const std::function<bool()>& condition);

/// As ComesTrue: Windows keeps the name of an open file, also of a deleted one, from others.
bool IsRenamed(const std::string& from, const std::string& to);

/// Puts a pipe there, or a folder on a system whose pipes have no path.
void MakeIrregular(const std::string& path);

/// In a fresh folder with the file of a new body, whose owner is "Line 4".
class JighostTest : public testing::Test {
  protected:
    JighostTest();

    /// Of body.yaml, as GetOwnerName shows it.
    static std::string Owner();
    /// Runs the steps of the text as sequence.yaml.
    static JIGHOST_RUN RunSequence(
        const std::string& text, std::vector<std::string> arguments = {});

  private:
    FreshFolder m_Folder;
};

// Steps of a sequence.
inline const std::string SET_OWNER = "  - {operation: SetOwnerName, record: {OwnerName: Desk}}\n";
inline const std::string SAVE_OWNER = "  - operation: SaveOwnerName\n";
// Its next attempt comes an hour later.
inline const std::string FAIL_AND_WAIT =
    "  - {operation: SetSlitRollingMode, record: {AccumulateTime: 85}, "
    "on_unexpected: retry 1 after 3600000 ms}\n";
