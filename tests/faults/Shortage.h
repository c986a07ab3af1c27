// Memory that runs out at a chosen allocation of the module or of what it calls.
#pragma once

#include <cstdint>
#include <memory>

enum class SHORTAGE { NONE, ONCE, FOR_EVER };

/// Memory runs out at the n-th allocation from its construction on, until its destruction.
class Shortage {
  public:
    Shortage(SHORTAGE shortage, std::uint32_t n);
    Shortage(const Shortage&) = delete;
    Shortage& operator=(const Shortage&) = delete;
    ~Shortage();

    static bool IsUnderWay();
    /// Whether an allocation has failed since the last shortage began.
    static bool HasFailed();
    /// Whether the first one that failed was to throw.
    static bool HasThrown();

  private:
    std::shared_ptr<void> m_pWatch;
};

/// Counts an allocation, and says whether it is to fail.
bool CountAllocation(bool bThrows);

/// As long as the watch lives, CountAllocation is asked about each allocation. The system's part.
std::shared_ptr<void> WatchAllocations();
