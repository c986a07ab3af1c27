// Which jighost this is: what an engineer writes beside a result, and a maintainer asks for first.
#pragma once

#include <string>

/// Such as "1.1.0".
std::string Version();

/// Version, commit and build, a line for each.
std::string VersionText();
