// The text that opens a log line.
#pragma once

#include <string>

namespace SimulatedBody {

/// The local date and time, or the text of SetLinePrefix; also when static objects are gone.
std::string ClockText();

void ResetClock();

}  // namespace SimulatedBody
