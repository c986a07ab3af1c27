// The heads of ELF and PE files, as far as they tell the machine.
#include "jighost/session/LibraryFormat.h"

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
static const std::size_t WORD = sizeof(void*);
static const ELF_TABLE ELF_SECTIONS = WORD == 8 ? ELF_TABLE{0x28, 0x3A} : ELF_TABLE{0x20, 0x2E};
static const ELF_TABLE ELF_SEGMENTS = WORD == 8 ? ELF_TABLE{0x20, 0x36} : ELF_TABLE{0x1C, 0x2A};
static const std::size_t SEGMENT_PLACE = WORD == 8 ? 0x08 : 0x04;  // in the file
static const std::size_t SEGMENT_SIZE = WORD == 8 ? 0x20 : 0x10;   // in the file

static const std::size_t PE_HEADER_PLACE = 0x3C;  // 4 bytes, where the header lies
static const std::size_t PE_MACHINE = 4;          // 2 bytes, behind the start of the header
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
        if (!IsWithin(number(table.place, WORD), size, end)) {
            return false;
        }
    }
    const std::uint64_t first = number(ELF_SEGMENTS.place, WORD);
    const std::uint64_t size = number(ELF_SEGMENTS.size, 2);
    for (std::uint64_t i = 0; i < number(ELF_SEGMENTS.size + 2, 2); ++i) {
        const std::uint64_t segment = first + i * size;
        if (!IsWithin(
                number(segment + SEGMENT_PLACE, WORD), number(segment + SEGMENT_SIZE, WORD), end)) {
            return false;
        }
    }
    return true;
}

static LIBRARY_FORMAT ElfFormat(std::ifstream& file, char elfClass) {
    const std::size_t bits = elfClass == 1 ? 32 : 64;
    const std::string text = BitsText(bits) + "ELF library";
    if (bits != HOST_BITS) {
        return {text + ", but this host is a " + BitsText(HOST_BITS) + "program", false};
    }
    return IsElfComplete(file) ? LIBRARY_FORMAT{text, true}
                               : LIBRARY_FORMAT{text + ", cut off ahead of its end", false};
}

static LIBRARY_FORMAT PeFormat(std::ifstream& file) {
    const auto header = static_cast<std::size_t>(Number(ReadAt(file, PE_HEADER_PLACE, 4)));
    if (ReadAt(file, header, PE_MACHINE) != std::string("PE\0\0", 4)) {
        return {"an old program, no library", false};
    }
    const std::uint64_t machine = Number(ReadAt(file, header + PE_MACHINE, 2));
    const std::string bits = machine == PE_I386    ? BitsText(32)
                             : machine == PE_AMD64 ? BitsText(64)
                                                   : "";
    return {bits + "Windows library, but this host is no Windows program", false};
}

LIBRARY_FORMAT ReadLibraryFormat(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    const std::string start = ReadAt(file, 0, ELF_CLASS + 1);
    if (start.size() > ELF_CLASS && start.starts_with("\177ELF")) {
        return ElfFormat(file, start[ELF_CLASS]);
    }
    return start.starts_with("MZ") ? PeFormat(file)
                                   : LIBRARY_FORMAT{"neither an ELF nor a Windows library", false};
}

void RequireLoadable(const std::string& path, const std::string& what) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) {
        throw HostError(EXIT_NO_MODULE, "there is no " + what + " " + path);
    }
    const LIBRARY_FORMAT format = ReadLibraryFormat(path);
    if (!format.bLoadable) {
        throw HostError(EXIT_NO_MODULE, "can't load " + path + ": " + format.text);
    }
}
