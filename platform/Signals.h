// What the system asks of a running program, beside what its user asks.
#pragma once

/// Has `pHandler` called, within a signal, with the number of the first signal that asks the
/// program to end: Ctrl-C, the end of its terminal, or what the system sends at its own end. The
/// same signal once more ends the program at once. One that whoever started the program has it
/// ignore stays ignored.
void CatchEndSignals(void (*pHandler)(int nSignal));

/// From now on a write to a pipe that nobody reads fails with EPIPE; else it ends the program, as
/// shells expect of those that only write.
void OutliveBrokenPipes();

/// From now on a write beyond the limit of file sizes fails with EFBIG; else it ends the program.
void OutliveSizeLimits();

/// Ends the program in the way that it is ended by a write to a pipe that nobody reads.
[[noreturn]] void EndByBrokenPipe();
