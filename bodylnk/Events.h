// The body's event procedures, found by name.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bodylnk/SimulatedBody.h"

namespace SimulatedBody {

/// A parameter list. No event mixes integers and blocks, so their order among each other is lost.
struct PARAMETERS {
    std::vector<std::int32_t> integers;
    std::vector<Bytes> blocks;
};

struct EVENT_ANSWER {
    std::int32_t word = 0;  ///< the result word; bit 0 set is failure where it is no data
    Bytes data = {};        ///< the return data of the few events that have some
};

/// Refuses an unknown event, and parameters that are not of the event's form.
EVENT_ANSWER RunEvent(const std::string& name, const PARAMETERS& parameters);

/// What ScriptReturnSize has set.
struct RETURN_SIZES {
    std::optional<std::uint32_t> reported;
    std::optional<std::uint32_t> left;
};
const RETURN_SIZES& ScriptedReturnSizes();

void ResetEvents();

}  // namespace SimulatedBody
