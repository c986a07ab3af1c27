// Both folders gone through row by row of the catalogue.
#include "jighost/check/DumpDifference.h"
#include "platform/Utf8Path.h"

#include <filesystem>

static bool IsThere(const std::filesystem::path& file) {
    std::error_code error;
    return std::filesystem::is_regular_file(file, error);
}

/// A file that is cut off has no value to compare.
static bool IsWhole(const std::filesystem::path& file, const PROPERTY_DATA_T& row) {
    std::error_code error;
    return std::filesystem::file_size(file, error) == DumpFileSize(row);
}

static void CompareRow(
    const PROPERTY_DATA_T& row, const std::string& left, const std::string& right,
    DUMP_DIFFERENCE& dumps) {
    const std::filesystem::path leftPath = PathOf(left) / DumpFileName(row);
    const std::filesystem::path rightPath = PathOf(right) / DumpFileName(row);
    const bool bLeft = IsThere(leftPath);
    if (bLeft != IsThere(rightPath)) {
        dumps.differences.push_back({&row, bLeft ? left : right, {}});
    } else if (bLeft && (IsWhole(leftPath, row) || IsWhole(rightPath, row))) {
        ++dumps.compared;
        const COMPARISON comparison = Compare(*OpenDumpFile(leftPath), *OpenDumpFile(rightPath));
        if (comparison.differing > 0) {
            dumps.differences.push_back({&row, "", comparison});
        }
    } else {
        ++dumps.missing;
    }
}

DUMP_DIFFERENCE CompareDumps(const std::string& left, const std::string& right) {
    DUMP_DIFFERENCE dumps;
    for (std::size_t i = 0; i < PROPERTY_COUNT; ++i) {
        CompareRow(PropertyDataTable[i], left, right, dumps);
    }
    return dumps;
}
