// Which jighost this is: what an engineer writes beside a result, and a maintainer asks for first.
#pragma once

#include <string>

/// Such as "1.1.0".
std::string Version();

/// Such as "1.1.0 (394d8f9)", the commit in brackets.
std::string VersionWithCommit();

/// Version, commit and build, a line for each.
std::string VersionText();
