// A folder that a dump has filled: a file for each row of the catalogue.
#pragma once

#include <cstdint>
#include <filesystem>
#include <istream>
#include <memory>
#include <string>
#include <vector>

#include "adjustment/PropertyTable.h"

/// The name of a row's file, such as "01000000.bin".
std::string DumpFileName(const PROPERTY_DATA_T& row);

/// Bytes of a row's file: the property's size, rounded up to a multiple of four.
std::uint64_t DumpFileSize(const PROPERTY_DATA_T& row);

/// Throws EXIT_WRONG_USE if there is no such folder, or if no file of a dump is in it.
void CheckDumpFolder(const std::filesystem::path& folder);

/// Throws EXIT_HOST_ERROR for a file that can't be read.
std::unique_ptr<std::istream> OpenDumpFile(const std::filesystem::path& path);

/// How two contents differ. What one has behind the end of the other counts as different.
struct COMPARISON {
    std::uint64_t differing = 0;  ///< bytes
    std::uint64_t first = 0;      ///< offset of the first of them
    // What stands there and behind it, as far as it is shown; empty where a content has ended.
    std::vector<std::uint8_t> left;
    std::vector<std::uint8_t> right;
};

/// Bytes of a difference that are shown.
constexpr std::size_t SHOWN_BYTES = 16;

/// Compares all that is left of both.
COMPARISON Compare(std::istream& left, std::istream& right);

/// Such as "2 bytes differ, the first at offset 4".
std::string ComparisonText(const COMPARISON& comparison);
