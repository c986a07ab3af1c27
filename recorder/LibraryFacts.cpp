// Read from the file's bytes.
#include "recorder/LibraryFacts.h"

#include <fstream>
#include <iterator>
#include <string_view>

#include "recorder/Sha256.h"

namespace Recorder {

static unsigned Word(std::string_view bytes, std::size_t place) {
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    return byteAt(place) | static_cast<unsigned>(byteAt(place + 1)) << 8U;
}

/// The version resource of a Windows library begins with this name, in two bytes for each character
/// and a zero one; behind it lie 2 bytes of padding, the signature 0xFEEF04BD in two words, its own
/// version in two more, and the library's in four, the second of each two first.
static std::string VersionIn(std::string_view bytes) {
    std::string name;
    for (const char character : std::string_view("VS_VERSION_INFO\0", 16)) {
        name += {character, '\0'};
    }
    const std::size_t start = bytes.find(name);
    const std::size_t signature = start + name.size() + 2;
    const std::size_t version = signature + 8;
    if (start == std::string_view::npos || bytes.size() < version + 8 ||
        Word(bytes, signature) != 0x04BD || Word(bytes, signature + 2) != 0xFEEF) {
        return "";
    }
    std::string text;
    for (const std::size_t place : {2U, 0U, 6U, 4U}) {
        text += text.empty() ? "" : ".";
        text += std::to_string(Word(bytes, version + place));
    }
    return text;
}

LIBRARY_FACTS ReadLibraryFacts(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        return {.file = file, .version = "", .hash = ""};
    }
    const std::string bytes(std::istreambuf_iterator<char>(stream), {});
    return {.file = file, .size = bytes.size(), .version = VersionIn(bytes), .hash = Sha256(bytes)};
}

}  // namespace Recorder
