// Named blocks of a run's own, for tests, benchmarks and fuzz targets: the module's blocks are
// their user's, so that two runs at one moment would disturb each other.
#pragma once

/// From here on this process, with all that it starts, shares its named blocks and mutexes with no
/// other run. Where the system gives it none of its own, it waits until the runs of that kind that
/// are at work have ended, and keeps others waiting. Called once, ahead of the first thread.
void TakeOwnBlocks();
