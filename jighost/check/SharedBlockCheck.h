// Whether the blocks of memory that the module shares with other processes can be used.
#pragma once

#include <string>

/// What is wrong with the first block that can't be used; empty if all can. A block's content is
/// left alone. It may leave a thread behind that waits for a mutex until the program ends.
std::string SharedBlockFault();
