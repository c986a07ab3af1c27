// A Windows library's or program's file: numbers, addresses and texts in it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// A library's file. Behind its end there are zeros.
class Image {
  public:
    /// The tables that every file can have, in their order.
    enum class TABLE : std::uint8_t { EXPORTS, IMPORTS };

    explicit Image(std::string_view bytes)
        : m_Bytes(bytes), m_Optional(Number(HEADER_PLACE) + OPTIONAL_HEADER) {}

    bool Is64() const { return Number(m_Optional, 2) == KIND_64; }

    /// Where the table lies; the end of the file if there is none.
    std::size_t PlaceOf(TABLE table) const {
        return PlaceOf(Number(
            m_Optional + (Is64() ? TABLES_64 : TABLES_32) + 8 * static_cast<std::size_t>(table)));
    }

    std::uint32_t Number(std::size_t place, std::size_t size = 4) const {
        std::uint32_t number = 0;
        for (std::size_t i = size; i-- > 0;) {
            number = number << 8 | (place + i < m_Bytes.size() ? Byte(place + i) : 0U);
        }
        return number;
    }

    /// Of what lies at the address in memory; the end of the file for what lies nowhere in it.
    std::size_t PlaceOf(std::uint32_t address) const {
        const std::size_t header = m_Optional - OPTIONAL_HEADER;
        std::size_t section = m_Optional + Number(header + OPTIONAL_SIZE, 2);
        const std::uint32_t count = std::min(Number(header + SECTION_COUNT, 2), MOST_SECTIONS);
        for (std::uint32_t i = 0; i < count; ++i, section += SECTION_SIZE) {
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
    static constexpr std::size_t HEADER_PLACE = 0x3C;  // 4 bytes, where the header lies
    // From the header on.
    static constexpr std::size_t SECTION_COUNT = 6;   // 2 bytes
    static constexpr std::size_t OPTIONAL_SIZE = 20;  // 2 bytes
    static constexpr std::size_t OPTIONAL_HEADER = 24;
    // The optional header begins with its kind, 2 bytes. From it on, where the tables lie:
    static constexpr std::uint32_t KIND_64 = 0x20B;
    static constexpr std::size_t TABLES_32 = 0x60;
    static constexpr std::size_t TABLES_64 = 0x70;
    // Of a section: 4 bytes each.
    static constexpr std::size_t SECTION_SIZE = 40;
    static constexpr std::uint32_t MOST_SECTIONS = 96;  // no system loads more
    static constexpr std::size_t SECTION_ADDRESS = 12;
    static constexpr std::size_t SECTION_BYTES = 16;  // how many, and behind it their place

    static constexpr std::size_t LONGEST_NAME = 4095;

    std::uint8_t Byte(std::size_t place) const { return static_cast<std::uint8_t>(m_Bytes[place]); }

    std::string_view m_Bytes;
    std::size_t m_Optional;
};
