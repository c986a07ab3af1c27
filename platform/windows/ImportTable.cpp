// The import table, through the sections in which addresses lie.
#include "platform/windows/ImportTable.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

static const std::size_t HEADER_PLACE = 0x3C;  // 4 bytes, where the header lies
// From the header on.
static const std::size_t SECTION_COUNT = 6;   // 2 bytes
static const std::size_t OPTIONAL_SIZE = 20;  // 2 bytes
static const std::size_t OPTIONAL_HEADER = 24;
// From the optional header on: 2 bytes, and where the import table lies.
static const std::size_t KIND = 0;
static const std::uint32_t KIND_64 = 0x20B;
static const std::size_t TABLE_32 = 0x68;
static const std::size_t TABLE_64 = 0x78;
// Of a section: 4 bytes each.
static const std::size_t SECTION_SIZE = 40;
static const std::size_t SECTION_ADDRESS = 12;
static const std::size_t SECTION_BYTES = 16;  // how many, and behind it their place in the file
// Of an entry of the table. All bytes of the last one are zero.
static const std::size_t ENTRY_SIZE = 20;
static const std::size_t ENTRY_NAME = 12;  // 4 bytes, its address

static const std::size_t MOST_ENTRIES = 1000;
static const std::size_t LONGEST_NAME = 255;

namespace {

/// A library's file. Behind its end there are zeros.
class Image {
  public:
    explicit Image(std::string_view bytes) : m_Bytes(bytes) {}

    std::uint32_t Number(std::size_t place, std::size_t size = 4) const {
        std::uint32_t number = 0;
        for (std::size_t i = size; i-- > 0;) {
            number = number << 8 | (place + i < m_Bytes.size() ? Byte(place + i) : 0U);
        }
        return number;
    }

    /// Of what lies at the address in memory; the end of the file for what lies nowhere in it.
    std::size_t PlaceOf(std::uint32_t address) const {
        const std::size_t header = Number(HEADER_PLACE);
        std::size_t section = header + OPTIONAL_HEADER + Number(header + OPTIONAL_SIZE, 2);
        for (std::size_t i = Number(header + SECTION_COUNT, 2); i-- > 0; section += SECTION_SIZE) {
            const std::uint32_t start = Number(section + SECTION_ADDRESS);
            if (address >= start && address - start < Number(section + SECTION_BYTES)) {
                return std::size_t{Number(section + SECTION_BYTES + 4)} + (address - start);
            }
        }
        return m_Bytes.size();
    }

    /// Up to its zero; empty if there is none before long.
    std::string_view TextAt(std::size_t place) const {
        const std::string_view text =
            m_Bytes.substr(std::min(place, m_Bytes.size()), LONGEST_NAME + 1);
        const std::size_t end = text.find('\0');
        return text.substr(0, end == std::string_view::npos ? 0 : end);
    }

  private:
    std::uint8_t Byte(std::size_t place) const { return static_cast<std::uint8_t>(m_Bytes[place]); }

    std::string_view m_Bytes;
};

}  // namespace

static bool IsName(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char character) {
        return character > ' ' && character <= '~';
    });
}

std::vector<std::string> ImportedLibraries(std::string_view bytes) {
    const Image image(bytes);
    const std::size_t header = image.Number(HEADER_PLACE) + OPTIONAL_HEADER;
    const bool b64 = image.Number(header + KIND, 2) == KIND_64;
    std::size_t entry = image.PlaceOf(image.Number(header + (b64 ? TABLE_64 : TABLE_32)));
    std::vector<std::string> names;
    for (; names.size() < MOST_ENTRIES; entry += ENTRY_SIZE) {
        const std::string_view name = image.TextAt(image.PlaceOf(image.Number(entry + ENTRY_NAME)));
        if (!IsName(name)) {
            break;
        }
        names.emplace_back(name);
    }
    return names;
}
