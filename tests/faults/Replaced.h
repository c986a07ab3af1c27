// Functions of the run-time library that a program of tests has in place of the library's own, in
// the module too: allocations that fail or are counted, and a close that fails.
#pragma once

/// Counts the blocks of memory that are taken and not given back from its construction on. What C
/// functions take counts where the module calls them.
class TakenBlocks {
  public:
    TakenBlocks();
    TakenBlocks(const TakenBlocks&) = delete;
    TakenBlocks& operator=(const TakenBlocks&) = delete;
    ~TakenBlocks();

    static int Count();
};

/// While it is true, each file that is closed is closed with an error.
extern bool g_bCloseFails;

/// The number of times that something closed what was not open.
extern int g_nVainCloses;
