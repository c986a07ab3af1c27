// Functions of the run-time library that a program of tests has in place of the library's own, in
// the module too: allocations that fail or are counted, and calls of the system that fail.
#pragma once

#include <cstddef>
#include <string_view>

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

/// While it lives, a function is asked ahead of each call of the system that is replaced: by its
/// name, and a number other than 0 is the error that it fails with. A file is closed all the same.
class AheadOfCalls {
  public:
    using ErrorOf = int(std::string_view call);

    explicit AheadOfCalls(ErrorOf* pErrorOf);
    AheadOfCalls(const AheadOfCalls&) = delete;
    AheadOfCalls& operator=(const AheadOfCalls&) = delete;
    ~AheadOfCalls();
};

/// The bytes that one call of the system moves at most.
extern std::size_t g_GreatestMove;

/// The number of times that something closed what was not open.
extern int g_nVainCloses;
