// Files that grow beside the ones whose place they take, under names that tell whose they are.
#pragma once

#include <filesystem>

/// NAME.unfinished-PROCESS, beside the target.
std::filesystem::path UnfinishedPath(const std::filesystem::path& target);

/// Removes what killed processes have left there under such names.
void RemoveLeftFiles(const std::filesystem::path& target);
