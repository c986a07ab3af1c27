// A flag that the signal sets.
#include "jighost/session/Interrupt.h"

#include <csignal>

static volatile std::sig_atomic_t g_bInterrupted = 0;

static void OnInterrupt(int signal) {
    g_bInterrupted = 1;
    std::signal(signal, SIG_DFL);
}

void CatchInterrupts() {
    std::signal(SIGINT, &OnInterrupt);
}

bool IsInterrupted() {
    return g_bInterrupted != 0;
}
