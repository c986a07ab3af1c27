// Signals that ask the program to end, for commands that end between two operations rather than
// within one: Ctrl-C, SIGTERM and SIGHUP.
#pragma once

/// From now on such a signal only sets IsInterrupted; the same one again ends the program at once.
void CatchInterrupts();

/// Whether such a signal came; the program then ends with InterruptExitCode.
bool IsInterrupted();

/// EXIT_BY_SIGNAL and the number of the signal that came.
int InterruptExitCode();
