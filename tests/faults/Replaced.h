// Functions of the run-time library that a program of tests has in place of the library's own, in
// the module too: allocations that fail or are counted, and a close that fails.
#pragma once

#include <cstdint>

enum class SHORTAGE { NONE, ONCE, FOR_EVER };

/// Memory runs out at the n-th allocation from its construction on, until its destruction.
class Shortage {
  public:
    Shortage(SHORTAGE shortage, std::uint32_t n);
    Shortage(const Shortage&) = delete;
    Shortage& operator=(const Shortage&) = delete;
    ~Shortage();

    // Also of the last one, behind its end.
    static bool HasFailed();
    static bool HasThrown();  ///< the first allocation that failed was to throw
};

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
