// Files missing, of a wrong length, foreign, or with other bytes than the body's.
#include "jighost/check/DumpCheck.h"

#include <set>
#include <sstream>

#include "bodylnk/SimulatedBody.h"
#include "jighost/check/DumpFolder.h"

static void CheckBytes(
    const std::filesystem::path& path, const PROPERTY_DATA_T& row, Findings& findings) {
    const SimulatedBody::Bytes bytes = SimulatedBody::SavedValue(row.PropertyId);
    std::istringstream expected(std::string(bytes.begin(), bytes.end()));
    const COMPARISON comparison = Compare(*OpenDumpFile(path), expected);
    if (comparison.differing > 0) {
        findings.push_back(
            {"bytes", DumpFileName(row), row.PropertyName, ComparisonText(comparison)});
    }
}

static void CheckRow(
    const std::filesystem::path& folder, const PROPERTY_DATA_T& row, bool bBody,
    Findings& findings) {
    const std::string name = DumpFileName(row);
    const std::uint64_t size = DumpFileSize(row);
    std::error_code error;
    if (!std::filesystem::is_regular_file(folder / name, error)) {
        findings.push_back(
            {"missing", name, row.PropertyName, std::to_string(size) + " bytes expected"});
        return;
    }
    const std::uint64_t found = std::filesystem::file_size(folder / name);
    if (found != size) {
        findings.push_back(
            {"length", name, row.PropertyName,
             std::to_string(found) + " bytes, " + std::to_string(size) + " expected"});
    } else if (bBody) {
        CheckBytes(folder / name, row, findings);
    }
}

static void CheckForeignFiles(const std::filesystem::path& folder, Findings& findings) {
    std::set<std::string> foreign;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        foreign.insert(entry.path().filename().string());
    }
    for (std::size_t i = 0; i < PROPERTY_COUNT; ++i) {
        foreign.erase(DumpFileName(PropertyDataTable[i]));
    }
    for (const std::string& name : foreign) {
        findings.push_back({"foreign", name, "", "not in the catalogue"});
    }
}

Findings CheckDump(const std::filesystem::path& folder, bool bBody) {
    Findings findings;
    for (std::size_t i = 0; i < PROPERTY_COUNT; ++i) {
        CheckRow(folder, PropertyDataTable[i], bBody, findings);
    }
    CheckForeignFiles(folder, findings);
    return findings;
}
