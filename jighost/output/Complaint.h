// How jighost tells what went wrong: "jighost: ..." on standard error.
#pragma once

#include <functional>
#include <string_view>

#include "jighost/text/HostError.h"

/// The text becomes one line, as PlainText gives it.
void Complain(std::string_view text);
void Complain(const HostError& error);

/// Does `work`, and complains if it throws a HostError: what comes behind it is done in any case.
/// Gives whether it was done.
bool DoOrComplain(const std::function<void()>& work);
