// Waiting for what another process has at the moment.
#pragma once

#include <chrono>
#include <functional>

/// Makes an attempt now and again until one succeeds. Gives false, in the middle of nothing, when
/// three seconds have passed or a signal asks the program to end.
bool SucceedsInTime(const std::function<bool()>& attempt);

/// Waits. Gives false, and does so at once, if a signal asks the program to end.
bool PassesWithoutInterrupt(std::chrono::milliseconds time);
