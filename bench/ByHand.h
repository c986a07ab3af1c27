// What an operation asks of the kernel, made again without the module: the other side of each
// ratio.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// A log cut into its flushes: one element for each, with the lines of it.
using Flushes = std::vector<std::string>;

/// Reads "JigDll.log" and cuts it after the given numbers of lines. Throws std::runtime_error if
/// they are not the log's lines exactly: the work made by hand would not be the same then.
Flushes ReadFlushes(const std::vector<std::size_t>& linesOfFlushes);

/// Appends the text to "JigDll.log": one open, one write, one close.
void FlushByHand(const std::string& text);

/// Writes a file whole: one open, one write, one close.
void WriteFileByHand(const std::string& name, const std::string& bytes);

/// Opens the body ID block with its mutex, stores 8 bytes under the mutex and lets go of both.
void StoreBodyIDByHand();

/// The bytes of a file; throws std::runtime_error if it can't be read.
std::string ReadFile(const std::string& name);
