// The signals that end programs.
#include "platform/Signals.h"

#include <csignal>
#include <cstdlib>
#include <initializer_list>

void CatchEndSignals(void (*pHandler)(int nSignal)) {
    struct sigaction caught = {};
    caught.sa_handler = pHandler;
    caught.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    for (const int nSignal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction former = {};
        if (sigaction(nSignal, nullptr, &former) == 0 && former.sa_handler != SIG_IGN) {
            sigaction(nSignal, &caught, nullptr);
        }
    }
}

void OutliveBrokenPipes() {
    std::signal(SIGPIPE, SIG_IGN);
}

void OutliveSizeLimits() {
    std::signal(SIGXFSZ, SIG_IGN);
}

void EndByBrokenPipe() {
    std::signal(SIGPIPE, SIG_DFL);
    std::raise(SIGPIPE);
    std::abort();  // not reached, unless the signal is blocked
}
