// The dynamic linker names in its text what it did not find.
#include "platform/LibraryError.h"

std::string MissingLibrary(const std::string& path, const std::string& text) {
    const std::string name = text.substr(0, text.find(": "));
    const bool bMissing = text.find("cannot open shared object file") != std::string::npos;
    return bMissing && name != path ? name : "";
}
