// Names and sizes of a dump's files, and two contents compared.
#include "jighost/check/DumpFolder.h"

#include "jighost/text/HostError.h"
#include "jighost/text/Numbers.h"
#include "trace/Hex.h"

std::string DumpFileName(const PROPERTY_DATA_T& row) {
    return HexText(row.PropertyId, 8) + ".bin";
}

std::uint64_t DumpFileSize(const PROPERTY_DATA_T& row) {
    return (std::uint64_t{row.PropertySize} + 3) / 4 * 4;
}

void CheckFolder(const std::filesystem::path& folder) {
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error)) {
        throw HostError(EXIT_WRONG_USE, "there is no folder " + folder.string());
    }
}

std::ifstream OpenDumpFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw HostError(EXIT_HOST_ERROR, "can't read " + path.string());
    }
    return file;
}

COMPARISON Compare(std::istream& left, std::istream& right) {
    using Traits = std::istream::traits_type;
    COMPARISON comparison;
    for (std::uint64_t offset = 0;; ++offset) {
        const auto leftByte = left.rdbuf()->sbumpc();
        const auto rightByte = right.rdbuf()->sbumpc();
        if (leftByte == Traits::eof() && rightByte == Traits::eof()) {
            return comparison;
        }
        if (leftByte != rightByte && comparison.differing++ == 0) {
            comparison.first = offset;
        }
    }
}

std::string ComparisonText(const COMPARISON& comparison) {
    return std::to_string(comparison.differing) +
           (comparison.differing == 1 ? " byte differs, at offset "
                                      : " bytes differ, the first at offset ") +
           std::to_string(comparison.first);
}
