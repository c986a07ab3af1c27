// Ids, sizes and plausible contents of the properties.
#include "bodylnk/PropertyFacts.h"

#include <cstddef>
#include <cstring>
#include <string_view>

namespace SimulatedBody {

namespace {

struct PROPERTY_RANGE {
    std::uint32_t first;
    std::uint32_t last;
    std::uint32_t step;
    std::uint32_t size;
};

// Adjustment data: what a whole dump reads. Pixel pitch and optical path length are listed with two
// bytes elsewhere, but are asked for and answered with four.
// clang-format off: one range a line
constexpr PROPERTY_RANGE s_AdjustmentData[] = {
    {0x1000000, 0x1000001, 1, 4},   // tuning flag and version
    {0x1000002, 0x1000002, 1, 16},  // sensor number
    {0x1000003, 0x1000004, 1, 4},   // pixel pitch, optical path length
    {0x1000006, 0x1000007, 1, 8},   // body ID, file prefix
    {0x1000009, 0x100000A, 1, 4},   // master body, version of the adjusting program
    {0x100000C, 0x100000C, 1, 20},  // unique ID
    {0x100000D, 0x100000D, 1, 4},   // unique ID flag
    {0x1000010, 0x1000010, 1, 32},  // model name
    {0x1000012, 0x1000012, 1, 4},   // limit language
    // Gains, shading and colour
    {0x1010006, 0x1010006, 1, 48},
    {0x1010022, 0x1010037, 1, 32},
    {0x1010078, 0x101007A, 1, 32},
    {0x10100A7, 0x10100A8, 1, 32},
    {0x101004E, 0x1010060, 3, 22592},
    {0x1010073, 0x1010073, 1, 48},
    {0x1010074, 0x1010074, 1, 76},
    {0x101007E, 0x101008E, 1, 1440},
    {0x1010094, 0x10100A1, 1, 29760},
    {0x1010125, 0x101013A, 1, 29760},
    // Video and display
    {0x1030001, 0x1030001, 1, 16},
    {0x1030002, 0x1030002, 1, 24},
    {0x1030004, 0x1030004, 1, 28},
    {0x1030005, 0x1030005, 1, 36},
    {0x1030006, 0x1030006, 1, 8},
    // Defect marks
    {0x1040000, 0x1040000, 1, 360000},
    {0x1050176, 0x1050176, 1, 28000},
    {0x1050177, 0x1050177, 1, 48056},
    {0x1050178, 0x1050178, 1, 40000},
    {0x105017B, 0x105017B, 1, 28000},
    // Live view
    {0x1050000, 0x1050007, 1, 52736},
    {0x1050081, 0x1050081, 1, 52736},
    {0x1050027, 0x1050037, 1, 512},
    {0x10500AB, 0x10500AB, 1, 48},
    {0x10500B9, 0x10500C1, 1, 32},
    {0x105010E, 0x105011B, 1, 5248},
    {0x10501C7, 0x10501C9, 1, 5248},
    {0x10501F2, 0x10501F4, 1, 5248},
    {0x105003D, 0x105004A, 1, 8544},
    {0x10501CA, 0x10501CC, 1, 8544},
    {0x10501F5, 0x10501F7, 1, 8544},
    {0x105004F, 0x105005C, 1, 6064},
    {0x10501CD, 0x10501CF, 1, 6064},
    {0x10501F8, 0x10501FA, 1, 6064},
    // DAF
    {0x105011C, 0x105011C, 1, 81920},
    {0x105011D, 0x105011D, 1, 14336},
    {0x1050154, 0x105015A, 1, 3664},
    {0x1050163, 0x1050164, 1, 3664},
    {0x10501E8, 0x10501F0, 1, 3664},
    {0x105015B, 0x105015B, 1, 88},
    {0x105015C, 0x105015C, 1, 56},
    {0x1050165, 0x1050165, 1, 56},
    // Shutter curve and AECU
    {0x1070000, 0x1070000, 1, 8400},
    {0x1F000009, 0x1F000009, 1, 16},
    {0x1F00000A, 0x1F00000A, 1, 504},
    {0x1F00000F, 0x1F00000F, 1, 48},
    {0x1F000011, 0x1F000013, 1, 106908},
};

constexpr PROPERTY_RANGE s_OtherProperties[] = {
    {0x100000E, 0x100000E, 1, 4},     // DL resonant frequency
    {0x1F000010, 0x1F000010, 1, 4},   // two 16-bit offsets, X and Y
    {0x2000001, 0x2000001, 1, 36},    // versions: ICU
    {0x2000004, 0x2000004, 1, 32},    // owner name
    {0x2000005, 0x2000007, 1, 36},    // versions: ICU slave, other parts, ICU master
    {0x2040002, 0x2040003, 1, 4},     // language, video system
    {0x2040005, 0x2040005, 1, 4},     // date display format
    {0x2040008, 0x2040008, 1, 4},     // file number
    {0x205001C, 0x205001C, 1, 4},     // guidance
    {0x205001F, 0x2050020, 1, 4},     // time zone, summer time
    {0x2050027, 0x2050027, 1, 4},     // touch sensor
    {0x2070001, 0x2070001, 1, 4},     // auto active sweep
    {0x2070012, 0x2070012, 1, 4},     // time code
    {0x2070013, 0x2070013, 1, 44},    // time code base
    {0x2070014, 0x2070015, 1, 4},     // time code words
    {0x2070017, 0x2070018, 1, 4},     // time code words
    {0xE070000, 0xE070001, 1, 64},    // artist, copyright
    {0x8000001D, 0x8000001E, 1, 4},   // card slots
    {0x80000024, 0x80000024, 1, 4},   // auto power off time
    {0x8000003D, 0x8000003D, 1, 3},   // auto lighting optimizer
    {0x80000048, 0x8000004A, 1, 4},   // noise reduction, highlight tone priority
    {0x80010007, 0x80010007, 1, 84},  // AF settings
    {0x80030000, 0x80030000, 1, 4},   // versions: MPU
    {0x8003001D, 0x8003001D, 1, 96},  // battery
};
// clang-format on

constexpr bool Holds(const PROPERTY_RANGE& range, std::uint32_t id) {
    return id >= range.first && id <= range.last && (id - range.first) % range.step == 0;
}

constexpr const PROPERTY_RANGE* FindRange(std::uint32_t id) {
    for (const PROPERTY_RANGE& range : s_AdjustmentData) {
        if (Holds(range, id)) {
            return &range;
        }
    }
    for (const PROPERTY_RANGE& range : s_OtherProperties) {
        if (Holds(range, id)) {
            return &range;
        }
    }
    return nullptr;
}

// Visits each id with its range; gives how many there are.
template <std::size_t N, class Visit>
constexpr std::uint32_t ForEachId(const PROPERTY_RANGE (&ranges)[N], const Visit& visit) {
    std::uint32_t count = 0;
    for (const PROPERTY_RANGE& range : ranges) {
        for (std::uint32_t id = range.first; id <= range.last; id += range.step) {
            visit(id, range);
            ++count;
        }
    }
    return count;
}

template <std::size_t N>
constexpr bool AreDistinct(const PROPERTY_RANGE (&ranges)[N]) {
    bool distinct = true;
    ForEachId(ranges, [&](std::uint32_t id, const PROPERTY_RANGE& range) {
        distinct = distinct && FindRange(id) == &range;
    });
    return distinct;
}

static_assert(ForEachId(s_AdjustmentData, [](auto, const auto&) {}) == 239);
static_assert(AreDistinct(s_AdjustmentData) && AreDistinct(s_OtherProperties));

constexpr bool Fits(std::uint32_t id, std::size_t end) {
    const PROPERTY_RANGE* pRange = FindRange(id);
    return pRange != nullptr && end <= pRange->size;
}

struct TEXT {
    std::uint32_t id;
    std::string_view text;  // zero bytes fill the rest
};

constexpr TEXT s_Texts[] = {
    {0x1000002, "S04-0017-2231"},      // sensor number
    {0x1000007, "IMG_"},               // file prefix
    {0x1000010, "BODY 460"},           // model name
    {0x2000001, "1.2.0 52(1a)"},       // versions: ICU
    {0x2000005, "1.2.0 52(1b)"},       // ICU slave
    {0x2000007, "1.2.0 52(1a)"},       // ICU master
    {0x2000004, "Line 4"},             // owner name
    {0xE070000, "Final check"},        // artist
    {0xE070001, "Adjustment line 4"},  // copyright
};

// Little-endian words that stand in place of the pattern.
struct WORD {
    std::uint32_t id;
    std::uint32_t offset;
    std::uint32_t value;
};

// Digit groups 1611 20 1 2 054321; the upper word comes first in the property.
constexpr std::uint64_t BODY_NUMBER = 16112012054321;
static_assert(BODY_NUMBER % 1000000 < 103680, "a file prefix can be made of this serial number");

constexpr WORD s_Words[] = {
    {0x1000000, 0, 0xFFFFFFFF},  // not in factory mode
    {0x1000001, 0, 0x00010004},
    {0x1000003, 0, 5360},
    {0x1000004, 0, 44000},
    {0x1000006, 0, static_cast<std::uint32_t>(BODY_NUMBER >> 32)},
    {0x1000006, 4, static_cast<std::uint32_t>(BODY_NUMBER)},
    {0x1000009, 0, 0},
    {0x100000A, 0, 0x00030002},
    {0x100000D, 0, 1},
    {0x100000E, 0, 0x09C40A28},
    {0x1000012, 0, 0},
    {0x1F000010, 0, 0xFFFE0003},  // X 3, Y -2
    {0x2040002, 0, 1},
    {0x2040003, 0, 0},
    {0x2040005, 0, 0},
    {0x2040008, 0, 117},
    {0x205001C, 0, 0},
    {0x205001F, 0, 60},
    {0x2050020, 0, 0},
    {0x2050027, 0, 1},
    {0x2070001, 0, 1},
    {0x2070012, 0, 0x00173B3B},
    {0x2070013, 0, 0},  // then Monday, 1 June 2026, 09:30:00; month and day of the year from 0
    {0x2070013, 4, 0},
    {0x2070013, 8, 30},
    {0x2070013, 12, 9},
    {0x2070013, 16, 1},
    {0x2070013, 20, 5},
    {0x2070013, 24, 2026},
    {0x2070013, 28, 1},
    {0x2070013, 32, 151},
    {0x2070013, 36, 0},
    {0x2070013, 40, 0},
    {0x2070014, 0, 0},
    {0x2070015, 0, 1},
    {0x2070017, 0, 1},
    {0x2070018, 0, 1},
    {0x8000001D, 0, 1},
    {0x8000001E, 0, 0},
    {0x80000024, 0, 120},
    {0x80000048, 0, 0},
    {0x80000049, 0, 1},
    {0x8000004A, 0, 0},
    {0x80030000, 0, 0x2C},
};

struct BYTE_AT {
    std::uint32_t id;
    std::uint32_t offset;
    std::uint8_t value;
};

constexpr BYTE_AT s_Bytes[] = {
    {0x2000006, 4, 0x11},   // versions: EEPROM
    {0x2000006, 6, 0x0A},   // FPU
    {0x2000006, 9, 0x23},   // BP
    {0x2000006, 10, 0x05},  // TPU
    {0x8000003D, 0, 0},     // auto lighting optimizer on
    {0x8000003D, 1, 0},     // and its second byte
    {0x8000003D, 2, 0},     // and its third
    {0x80010007, 10, 0},    // AF on
    {0x8003001D, 22, 2},    // battery status: good
};

constexpr bool AllFit() {
    bool fit = true;
    for (const TEXT& text : s_Texts) {
        fit = fit && Fits(text.id, text.text.size());
    }
    for (const WORD& word : s_Words) {
        fit = fit && Fits(word.id, word.offset + sizeof(word.value));
    }
    for (const BYTE_AT& byte : s_Bytes) {
        fit = fit && Fits(byte.id, byte.offset + 1);
    }
    return fit;
}
static_assert(AllFit());

bool FillText(std::uint32_t id, std::uint32_t size, std::uint8_t* pBytes) {
    for (const TEXT& text : s_Texts) {
        if (text.id == id) {
            std::memset(pBytes, 0, size);
            std::memcpy(pBytes, text.text.data(), text.text.size());
            return true;
        }
    }
    return false;
}

// Words that differ from each other and from those of other properties. Each depends on its place
// alone, so that the compiler can write many at once: a dump fetches three megabytes of them.
void FillPattern(std::uint32_t id, std::uint32_t size, std::uint8_t* pBytes) {
    constexpr std::uint32_t STEP = 0x9E3779B9;
    const std::uint32_t start = id * 0x85EBCA6B;
    const std::uint32_t words = size / 4;
    for (std::uint32_t n = 0; n < words; ++n) {
        const std::uint32_t word = start + n * STEP;
        std::memcpy(pBytes + std::size_t{4} * n, &word, sizeof(word));
    }
    const std::uint32_t last = start + words * STEP;
    std::memcpy(pBytes + std::size_t{4} * words, &last, size % 4);
}

}  // namespace

std::optional<std::uint32_t> FactorySize(std::uint32_t id) {
    const PROPERTY_RANGE* pRange = FindRange(id);
    return pRange != nullptr ? std::optional(pRange->size) : std::nullopt;
}

void FillFactoryValue(std::uint32_t id, std::uint32_t size, void* data) {
    auto* pBytes = static_cast<std::uint8_t*>(data);
    if (FillText(id, size, pBytes)) {
        return;
    }
    FillPattern(id, size, pBytes);
    for (const WORD& word : s_Words) {
        if (word.id == id) {
            std::memcpy(pBytes + word.offset, &word.value, sizeof(word.value));
        }
    }
    for (const BYTE_AT& byte : s_Bytes) {
        if (byte.id == id) {
            pBytes[byte.offset] = byte.value;
        }
    }
}

void ForEachFactoryProperty(const std::function<void(std::uint32_t, std::uint32_t)>& visit) {
    const auto visitId = [&](std::uint32_t id, const PROPERTY_RANGE& range) {
        visit(id, range.size);
    };
    ForEachId(s_AdjustmentData, visitId);
    ForEachId(s_OtherProperties, visitId);
}

}  // namespace SimulatedBody
