// Faults of the file system, made by the system's own means.
#pragma once

#include <cstdint>
#include <memory>

/// The fault lasts until this goes.
using FileFault = std::shared_ptr<void>;

/// No file of the module can be opened for writing: neither the log nor one beside it or in "dump".
/// Where it takes an ordinary user, a block that is opened meanwhile is that user's.
FileFault NothingWritable();

/// No descriptor is left to open a file with.
FileFault NoDescriptors();
/// Whether the system takes a descriptor to read an INI file.
extern const bool INI_FILES_TAKE_DESCRIPTORS;

/// A file has room for so many bytes: a write that does not fit is cut, one behind them fails.
FileFault FileSizeLimit(std::uintmax_t bytes);

/// The descriptor that the next file gets: a higher one tells that a file was left open.
int NextDescriptor();
