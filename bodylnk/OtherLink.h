// Another camera link in the simulated body's place. All that watches, records, answers calls or
// makes them fail works in between as it does on the body.
#pragma once

#include <string>
#include <vector>

#include "platform/Export.h"

namespace OtherLink {

/// From now on everything passes on to the camera link at the path: constructors, destructors,
/// member functions and `_gt`. No link object may be there, and no module that has one. An object
/// of that library may have 65536 bytes. Throws std::runtime_error, with the names in it, if the
/// library can't be loaded or lacks functions of the camera link.
BODYLNK_API void Use(const std::string& path);

/// The body answers again, and the library is let go of; does nothing if there is none. No link
/// object may be left.
BODYLNK_API void Leave();

/// The decorated names of the functions that the library at the path lacks. Throws
/// std::runtime_error if it can't be loaded.
BODYLNK_API std::vector<std::string> MissingNames(const std::string& path);

}  // namespace OtherLink
