// Names and sizes of a dump's files, and two contents compared.
#include "jighost/check/DumpFolder.h"

#include <algorithm>

#include "jighost/text/HostError.h"
#include "jighost/text/Numbers.h"
#include "platform/FileStream.h"
#include "trace/Hex.h"

std::string DumpFileName(const PROPERTY_DATA_T& row) {
    return HexText(row.PropertyId, 8) + ".bin";
}

std::uint64_t DumpFileSize(const PROPERTY_DATA_T& row) {
    return (std::uint64_t{row.PropertySize} + 3) / 4 * 4;
}

static bool IsFileOfDump(const std::filesystem::path& path) {
    const auto end = PropertyDataTable.begin() + PROPERTY_COUNT;
    return std::any_of(PropertyDataTable.begin(), end, [&](const PROPERTY_DATA_T& row) {
        return path.filename() == DumpFileName(row);
    });
}

void CheckDumpFolder(const std::filesystem::path& folder) {
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error)) {
        throw HostError(EXIT_WRONG_USE, "there is no folder " + folder.string());
    }
    const std::filesystem::directory_iterator files(folder);
    if (std::none_of(begin(files), end(files), [](const std::filesystem::directory_entry& entry) {
            return IsFileOfDump(entry.path());
        })) {
        throw HostError(
            EXIT_WRONG_USE, "there is no dump in " + folder.string() + ": expected files such as " +
                                DumpFileName(PropertyDataTable.front()));
    }
}

std::unique_ptr<std::istream> OpenDumpFile(const std::filesystem::path& path) {
    auto pFile = std::make_unique<FileStream>(path);
    if (!*pFile) {
        throw HostError(EXIT_HOST_ERROR, "can't read " + path.string());
    }
    return pFile;
}

/// Takes a byte along, up to what is shown of a difference.
static void Show(std::vector<std::uint8_t>& bytes, std::istream::int_type byte) {
    if (byte != std::istream::traits_type::eof() && bytes.size() < SHOWN_BYTES) {
        bytes.push_back(static_cast<std::uint8_t>(byte));
    }
}

COMPARISON Compare(std::istream& left, std::istream& right) {
    const auto end = std::istream::traits_type::eof();
    COMPARISON comparison;
    for (std::uint64_t offset = 0;; ++offset) {
        const auto leftByte = left.rdbuf()->sbumpc();
        const auto rightByte = right.rdbuf()->sbumpc();
        if (leftByte == end && rightByte == end) {
            return comparison;
        }
        if (leftByte != rightByte && comparison.differing++ == 0) {
            comparison.first = offset;
        }
        if (comparison.differing > 0) {
            Show(comparison.left, leftByte);
            Show(comparison.right, rightByte);
        }
    }
}

std::string ComparisonText(const COMPARISON& comparison) {
    return std::to_string(comparison.differing) +
           (comparison.differing == 1 ? " byte differs, at offset "
                                      : " bytes differ, the first at offset ") +
           std::to_string(comparison.first);
}
