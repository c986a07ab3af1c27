// The console's events, which come in a thread of their own.
#include "platform/Signals.h"

#include <atomic>
#include <csignal>
#include <cstdlib>

#include "platform/Platform.h"

static const int BROKEN_PIPE_EXIT_CODE = 128 + 13;  // what shells of other systems make of it

static void (*g_pHandler)(int nSignal) = nullptr;
static std::atomic<bool> g_bAsked = false;

/// Ctrl-C and Ctrl-Break may come again, and what this returns FALSE for ends the program. Behind
/// the other events the program ends as soon as this returns.
static BOOL WINAPI OnConsoleEvent(DWORD event) {
    const bool bKey = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
    if (g_bAsked.exchange(true) && bKey) {
        return FALSE;
    }
    g_pHandler(SIGINT);
    if (!bKey) {
        Sleep(INFINITE);
    }
    return TRUE;
}

void CatchEndSignals(void (*pHandler)(int nSignal)) {
    g_pHandler = pHandler;
    SetConsoleCtrlHandler(&OnConsoleEvent, TRUE);
}

void OutliveBrokenPipes() {}

void OutliveSizeLimits() {}

void EndByBrokenPipe() {
    std::_Exit(BROKEN_PIPE_EXIT_CODE);
}
