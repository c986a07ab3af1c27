// Ctrl-C, for commands that end between two operations rather than within one.
#pragma once

/// From now on Ctrl-C only sets IsInterrupted; a second one ends the program at once.
void CatchInterrupts();

/// Whether Ctrl-C came; the program then ends with EXIT_INTERRUPTED.
bool IsInterrupted();
