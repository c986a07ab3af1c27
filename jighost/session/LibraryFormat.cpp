// The heads of ELF and PE files, as far as they tell the machine.
#include "jighost/session/LibraryFormat.h"
#include "platform/Program.h"
#include "platform/Utf8Path.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>

#include "jighost/text/HostError.h"

static const std::size_t HOST_BITS = 8 * sizeof(void*);

static const std::size_t ELF_CLASS = 4;  // 1 for 32 bits, 2 for 64
/// Where a table of an ELF header lies in the file, and the size of one entry and their number.
struct ELF_TABLE {
    std::size_t place;  // a word
    std::size_t size;   // 2 bytes, and the number behind it
};

// In a header, and in a segment's entry, of the host's word size.
static const std::size_t WORD_SIZE = sizeof(void*);
static const ELF_TABLE ELF_SECTIONS =
    WORD_SIZE == 8 ? ELF_TABLE{0x28, 0x3A} : ELF_TABLE{0x20, 0x2E};
static const ELF_TABLE ELF_SEGMENTS =
    WORD_SIZE == 8 ? ELF_TABLE{0x20, 0x36} : ELF_TABLE{0x1C, 0x2A};
static const std::size_t SEGMENT_PLACE = WORD_SIZE == 8 ? 0x08 : 0x04;  // in the file
static const std::size_t SEGMENT_SIZE = WORD_SIZE == 8 ? 0x20 : 0x10;   // in the file

static const std::size_t PE_HEADER_PLACE = 0x3C;  // 4 bytes, where the header lies
static const std::size_t PE_MACHINE = 4;          // 2 bytes, behind the start of the header
static const std::size_t PE_SECTION_COUNT = 6;    // 2 bytes
static const std::size_t PE_OPTIONAL_SIZE = 20;   // 2 bytes, of what stands ahead of the sections
static const std::size_t PE_HEADER_SIZE = 24;
static const std::size_t PE_SECTION_SIZE = 40;  // of a section's entry
static const std::size_t PE_BYTES_SIZE = 16;    // 4 bytes in it, and their place in the file
static const std::uint32_t PE_I386 = 0x14C;
static const std::uint32_t PE_AMD64 = 0x8664;

/// At most `size` bytes from `offset` on; fewer at the end of the file.
static std::string ReadAt(std::ifstream& file, std::size_t offset, std::size_t size) {
    std::string bytes(size, '\0');
    file.clear();
    file.seekg(static_cast<std::streamoff>(offset));
    file.read(bytes.data(), static_cast<std::streamsize>(size));
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
}

/// A number whose lowest byte comes first.
static std::uint64_t Number(const std::string& bytes) {
    std::uint64_t number = 0;
    for (std::size_t i = bytes.size(); i-- > 0;) {
        number = number << 8 | static_cast<std::uint8_t>(bytes[i]);
    }
    return number;
}

static std::string BitsText(std::size_t bits) {
    return std::to_string(bits) + "-bit ";
}

static std::uint64_t FileSize(std::ifstream& file) {
    file.clear();
    file.seekg(0, std::ios::end);
    return static_cast<std::uint64_t>(file.tellg());
}

static bool IsWithin(std::uint64_t place, std::uint64_t size, std::uint64_t end) {
    return size <= end && place <= end - size;
}

/// A file that is cut off must not be loaded: the loader maps what is not there, and the program
/// dies of it. The table of sections mostly is the last part of a file.
static bool IsElfComplete(std::ifstream& file) {
    const std::uint64_t end = FileSize(file);
    const auto number = [&file](std::uint64_t place, std::size_t size) {
        return Number(ReadAt(file, static_cast<std::size_t>(place), size));
    };
    for (const ELF_TABLE& table : {ELF_SECTIONS, ELF_SEGMENTS}) {
        const std::uint64_t size = number(table.size, 2) * number(table.size + 2, 2);
        if (!IsWithin(number(table.place, WORD_SIZE), size, end)) {
            return false;
        }
    }
    const std::uint64_t first = number(ELF_SEGMENTS.place, WORD_SIZE);
    const std::uint64_t size = number(ELF_SEGMENTS.size, 2);
    for (std::uint64_t i = 0; i < number(ELF_SEGMENTS.size + 2, 2); ++i) {
        const std::uint64_t segment = first + i * size;
        if (!IsWithin(
                number(segment + SEGMENT_PLACE, WORD_SIZE),
                number(segment + SEGMENT_SIZE, WORD_SIZE), end)) {
            return false;
        }
    }
    return true;
}

namespace {

/// What a library was built for, seen from this host.
struct BUILT_FOR {
    bool bOwnSystem;
    std::size_t bits;
};

}  // namespace

/// `isComplete` is asked of a library that could be loaded.
template <class Check>
static LIBRARY_FORMAT Judged(
    const std::string& text, const BUILT_FOR& built, const Check& isComplete) {
    if (!built.bOwnSystem) {
        return {
            text + ", but this host is " + (IS_WINDOWS ? "a " : "no ") + "Windows program", false};
    }
    if (built.bits != HOST_BITS) {
        return {text + ", but this host is a " + BitsText(HOST_BITS) + "program", false};
    }
    return isComplete() ? LIBRARY_FORMAT{text, true}
                        : LIBRARY_FORMAT{text + ", cut off ahead of its end", false};
}

static LIBRARY_FORMAT ElfFormat(std::ifstream& file, char elfClass) {
    const std::size_t bits = elfClass == 1 ? 32 : 64;
    const std::string text = BitsText(bits) + "ELF library";
    return Judged(text, {!IS_WINDOWS, bits}, [&file] { return IsElfComplete(file); });
}

static bool IsPeComplete(std::ifstream& file, std::size_t header) {
    const std::uint64_t end = FileSize(file);
    const auto number = [&file](std::size_t place, std::size_t size) {
        return static_cast<std::size_t>(Number(ReadAt(file, place, size)));
    };
    const std::size_t first = header + PE_HEADER_SIZE + number(header + PE_OPTIONAL_SIZE, 2);
    for (std::size_t i = 0; i < number(header + PE_SECTION_COUNT, 2); ++i) {
        const std::size_t bytes = first + i * PE_SECTION_SIZE + PE_BYTES_SIZE;
        if (!IsWithin(number(bytes + 4, 4), number(bytes, 4), end)) {
            return false;
        }
    }
    return true;
}

static LIBRARY_FORMAT PeFormat(std::ifstream& file) {
    const auto header = static_cast<std::size_t>(Number(ReadAt(file, PE_HEADER_PLACE, 4)));
    if (ReadAt(file, header, PE_MACHINE) != std::string("PE\0\0", 4)) {
        return {"an old program, no library", false};
    }
    const std::uint64_t machine = Number(ReadAt(file, header + PE_MACHINE, 2));
    const std::size_t bits = machine == PE_I386 ? 32 : machine == PE_AMD64 ? 64 : 0;
    const std::string text = (bits == 0 ? "" : BitsText(bits)) + "Windows library";
    return Judged(text, {IS_WINDOWS, bits}, [&] { return IsPeComplete(file, header); });
}

LIBRARY_FORMAT ReadLibraryFormat(const std::string& path) {
    std::ifstream file(PathOf(path), std::ios::binary);
    const std::string start = ReadAt(file, 0, ELF_CLASS + 1);
    if (start.size() > ELF_CLASS && start.starts_with("\177ELF")) {
        return ElfFormat(file, start[ELF_CLASS]);
    }
    return start.starts_with("MZ") ? PeFormat(file)
                                   : LIBRARY_FORMAT{"neither an ELF nor a Windows library", false};
}

void RequireLoadable(const std::string& path, const std::string& what) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(PathOf(path), error)) {
        throw HostError(EXIT_NO_MODULE, "there is no " + what + " " + path);
    }
    const LIBRARY_FORMAT format = ReadLibraryFormat(path);
    if (!format.bLoadable) {
        throw HostError(EXIT_NO_MODULE, "can't load " + path + ": " + format.text);
    }
}
