// jighost run as a program of its own, beside the tests.
#pragma once

#include <gtest/gtest.h>

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

/// Runs it in the current directory to its end; the file errors.txt there is its standard error.
JIGHOST_RUN RunJighost(const std::vector<std::string>& arguments);

/// The same for a shell's script, in which "$0" is jighost.
JIGHOST_RUN RunShell(const std::string& script, const std::vector<std::string>& arguments = {});

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

/// A named pipe in a file's place: who writes it waits while it is full.
class NamedPipe {
  public:
    explicit NamedPipe(const std::string& path);
    ~NamedPipe();
    NamedPipe(const NamedPipe&) = delete;
    NamedPipe& operator=(const NamedPipe&) = delete;

    /// Reads until the text has come, and gives all that came; fails the test if it does not.
    std::string ReadUntil(const std::string& text) const;

  private:
    int m_nPipe = -1;
};
