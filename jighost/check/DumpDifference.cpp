// Both folders gone through row by row of the catalogue.
#include "jighost/check/DumpDifference.h"

#include <filesystem>

static void CompareRow(
    const PROPERTY_DATA_T& row, const std::string& left, const std::string& right,
    DUMP_DIFFERENCE& dumps) {
    const std::string name = DumpFileName(row);
    const auto hasFile = [&](const std::string& folder) {
        std::error_code error;
        return std::filesystem::is_regular_file(std::filesystem::path(folder) / name, error);
    };
    const bool bLeft = hasFile(left);
    if (bLeft != hasFile(right)) {
        dumps.differences.push_back({&row, bLeft ? left : right, {}});
    } else if (bLeft) {
        ++dumps.compared;
        std::ifstream leftFile = OpenDumpFile(std::filesystem::path(left) / name);
        std::ifstream rightFile = OpenDumpFile(std::filesystem::path(right) / name);
        const COMPARISON comparison = Compare(leftFile, rightFile);
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
