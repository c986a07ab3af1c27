// What jighost tells: standard output and standard error, line by line and watched to their end.
#pragma once

#include "jighost/output/LineBuffer.h"

/// While it lives, std::cout and std::cerr go through here. Each line is handed to the system as
/// soon as it is whole; on a terminal a line that is too long is broken between words. What can't
/// be written is not lost unnoticed: the exit code tells it.
class Output {
  public:
    Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output();

    /// Writes what is left and gives the code to end with: `exitCode`, or EXIT_HOST_ERROR if data
    /// were lost, or talk was lost where all else went well. The code of a signal stays. If it is
    /// nobody who reads on, ends the program as shells expect, with no word.
    int Finish(int exitCode);

  private:
    LineBuffer m_Data;
    LineBuffer m_Talk;
    std::streambuf* m_pFormerData;
    std::streambuf* m_pFormerTalk;
};
