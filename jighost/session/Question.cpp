// A signal that asks the program to end comes through while a line is waited for.
#include "jighost/session/Question.h"

#include <iostream>

#include "jighost/session/Interrupt.h"
#include "jighost/text/PlainText.h"
#include "platform/Program.h"

static const int INTERVAL_MILLISECONDS = 20;

bool CanAsk() {
    return IsInputTerminal() && IsErrorOutputTerminal();
}

std::optional<std::string> Ask(const std::string& text) {
    std::cerr << PlainText(text) << ' ' << std::flush;
    while (!IsInterrupted() && !WaitForInput(INTERVAL_MILLISECONDS)) {
    }
    std::string line;
    if (IsInterrupted() || !std::getline(std::cin, line)) {
        std::cerr << std::endl;
        return std::nullopt;
    }
    return line;
}
