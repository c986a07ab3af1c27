// The import table, through the sections in which addresses lie.
#include "platform/windows/ImportTable.h"

#include <algorithm>
#include <string>

// Of an entry of the table. All bytes of the last one are zero.
static const std::size_t ENTRY_SIZE = 20;
static const std::size_t ENTRY_NAME = 12;  // 4 bytes, its address

static const std::size_t MOST_ENTRIES = 1000;

static bool IsName(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char character) {
        return character > ' ' && character <= '~';
    });
}

std::vector<IMPORTED_LIBRARY> ImportsOf(const Image& image) {
    std::vector<IMPORTED_LIBRARY> libraries;
    std::size_t place = image.PlaceOf(Image::TABLE::IMPORTS);
    for (; libraries.size() < MOST_ENTRIES; place += ENTRY_SIZE) {
        const std::string_view name = image.TextAt(image.PlaceOf(image.Number(place + ENTRY_NAME)));
        if (!IsName(name)) {
            break;
        }
        libraries.push_back({std::string(name), place});
    }
    return libraries;
}

std::vector<std::string> ImportedLibraries(std::string_view bytes) {
    std::vector<std::string> names;
    for (const IMPORTED_LIBRARY& library : ImportsOf(Image(bytes))) {
        names.push_back(library.name);
    }
    return names;
}
