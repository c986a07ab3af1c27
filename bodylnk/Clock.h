// The text that opens a log line.
#pragma once

namespace SimulatedBody {

void ResetClock();

}  // namespace SimulatedBody
