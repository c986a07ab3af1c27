// By the tables of imports and exports.
#include "platform/LibraryNames.h"

#include <algorithm>

#include "platform/windows/ImportTable.h"

// Of a library's entry in the table of imports: addresses of its names, the first one only in files
// whose names were not looked up in advance.
static const std::size_t NAMES = 0;
static const std::size_t OTHER_NAMES = 16;
static const std::uint32_t BY_NUMBER = 0x80000000;
static const std::size_t HINT_SIZE = 2;  // ahead of a name

// Of the table of exports: 4 bytes each.
static const std::size_t FIRST_NUMBER = 16;
static const std::size_t NUMBER_COUNT = 20;
static const std::size_t NAME_COUNT = 24;
static const std::size_t NAME_ADDRESSES = 32;

static const std::uint32_t MOST_NAMES = 100'000;

static std::string NumberName(std::uint32_t number) {
    return '#' + std::to_string(number);
}

static bool IsSameName(std::string_view left, std::string_view right) {
    const auto small = [](char character) {
        return character >= 'A' && character <= 'Z' ? static_cast<char>(character + 0x20)
                                                    : character;
    };
    return std::equal(
        left.begin(), left.end(), right.begin(), right.end(),
        [&](char one, char other) { return small(one) == small(other); });
}

static void AddImports(const Image& image, std::size_t entry, std::set<std::string>& names) {
    const std::size_t size = image.Is64() ? 8 : 4;
    const std::uint32_t addresses = image.Number(entry + NAMES);
    std::size_t place =
        image.PlaceOf(addresses != 0 ? addresses : image.Number(entry + OTHER_NAMES));
    for (; image.Number(place) != 0 && names.size() < MOST_NAMES; place += size) {
        const std::uint32_t name = image.Number(place);
        const bool bByNumber = (image.Number(place + size - 4) & BY_NUMBER) != 0;
        names.emplace(
            bByNumber ? NumberName(name & 0xFFFF)
                      : std::string(image.TextAt(image.PlaceOf(name) + HINT_SIZE)));
    }
}

bool MayHaveNames(std::string_view start) {
    return start.starts_with("MZ");
}

std::set<std::string> NamesTaken(std::string_view bytes, std::string_view libraryName) {
    const Image image(bytes);
    std::set<std::string> names;
    for (const IMPORTED_LIBRARY& library : ImportsOf(image)) {
        if (IsSameName(library.name, libraryName)) {
            AddImports(image, library.place, names);
        }
    }
    return names;
}

std::set<std::string> NamesOffered(std::string_view bytes) {
    const Image image(bytes);
    const std::size_t table = image.PlaceOf(Image::TABLE::EXPORTS);
    const std::size_t addresses = image.PlaceOf(image.Number(table + NAME_ADDRESSES));
    std::set<std::string> names;
    for (std::uint32_t i = std::min(image.Number(table + NAME_COUNT), MOST_NAMES); i-- > 0;) {
        names.emplace(image.TextAt(image.PlaceOf(image.Number(addresses + 4 * std::size_t{i}))));
    }
    for (std::uint32_t i = std::min(image.Number(table + NUMBER_COUNT), MOST_NAMES); i-- > 0;) {
        names.emplace(NumberName(image.Number(table + FIRST_NUMBER) + i));
    }
    return names;
}
