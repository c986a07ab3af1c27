// Where the files lie that belong to jighost: beside it, as a build leaves them, or in the folders
// that an installation gives them, wherever on the machine it stands.
#pragma once

#include <filesystem>

/// The module's file.
std::filesystem::path OwnModule();

/// The folder of the sample of BoardInf.ini.
std::filesystem::path SampleFolder();

/// The folder of the recorder's libraries.
std::filesystem::path RecorderFolder();
