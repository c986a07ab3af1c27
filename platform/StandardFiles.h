// Standard output and standard error as files of the system.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

constexpr int STANDARD_OUTPUT = 1;
constexpr int STANDARD_ERROR = 2;

/// Leads to the file that it is; empty where that has no path.
std::string StandardFilePath(int nFile);

/// Sees to it that a standard file which whoever started the program has closed fails, and that no
/// file which is opened later takes its number and what is written to it. To be called ahead of all
/// else.
void KeepStandardFiles();

/// Writes all bytes, or gives the error number; 0 for success.
int WriteStandardFile(int nFile, std::string_view bytes);

/// The characters in a line of the terminal that the file is; 0 if it is none or does not tell.
std::size_t TerminalWidth(int nFile);
