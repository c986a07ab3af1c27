// The signal is only noted: what it ends looks here.
#include "jighost/session/Interrupt.h"

#include <csignal>

#include "jighost/text/HostError.h"
#include "platform/Signals.h"

static volatile std::sig_atomic_t g_nSignal = 0;

static void OnSignal(int nSignal) {
    g_nSignal = nSignal;
}

void CatchInterrupts() {
    CatchEndSignals(&OnSignal);
}

bool IsInterrupted() {
    return g_nSignal != 0;
}

int InterruptExitCode() {
    return EXIT_BY_SIGNAL + g_nSignal;
}
