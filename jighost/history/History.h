// Where a history lies, and how it is opened.
#pragma once

#include <memory>
#include <string>

#include "jighost/history/Database.h"

/// The file in the folder of the user's data. Throws EXIT_WRONG_USE where there is no such folder.
std::string DefaultHistory();

// `place` is a file or a server's URL; empty for DefaultHistory.

/// For records that come in: made if there is none, with its folder.
std::unique_ptr<Database> OpenOrMakeHistory(const std::string& place);
/// For what is told of it. Throws EXIT_HOST_ERROR if there is none.
std::unique_ptr<Database> OpenHistory(const std::string& place);
