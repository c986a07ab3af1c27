// What is counted, planned and kept of the calls that pass to the simulated body or another link.
#pragma once

namespace SimulatedBody {

void ResetCalls();

}  // namespace SimulatedBody
