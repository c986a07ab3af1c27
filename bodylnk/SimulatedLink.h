// The simulated body as what stands behind the classes of the camera link.
#pragma once

#include "passage/Behind.h"

namespace SimulatedBody {

/// There for ever, also when static objects are gone.
Link::Behind& BodyBehindLink();

}  // namespace SimulatedBody
