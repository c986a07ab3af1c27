// The forms of jighost's commands, each held against all that it prints.
#pragma once

#include <string>

#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

/// A command line behind "jighost", as a shell reads it, and what must come of it; moments read
/// MOMENT there and durations T, or 0 in a document.
struct FORM {
    std::string command;
    int exitCode;
    std::string output;
    std::string errors;
};

void Expect(const FORM& form);
/// As Expect; the output is a document, given without the blanks and line ends between its parts.
void ExpectDocument(const FORM& form);

/// What standard error has of a refusal.
std::string Refusal(const std::string& line);
/// 128 words, each with its place for its value.
std::string EepromWords(const char* pszSeparator);

/// The owner's name in the desk's body: "De\k" and zeros.
inline const std::string OWNER_BYTES =
    "44 65 5c 6b 00 00 00 00 00 00 00 00 00 00 00 00 "
    "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00";

/// With a body that was written by hand, desk.yaml.
class JighostFormsTest : public testing::Test {
  protected:
    JighostFormsTest();

    const FreshFolder m_Folder;
};
