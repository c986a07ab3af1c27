// A table of texts as spreadsheets write it: commas, quotes around what holds one, a head line.
#pragma once

#include <string>
#include <vector>

struct CSV_ROW {
    std::size_t line;  ///< in the file, from 1
    std::vector<std::string> values;
};

struct CSV_TABLE {
    std::vector<std::string> names;  ///< of the columns
    std::vector<CSV_ROW> rows;       ///< each with as many values as there are names
};

/// Throws EXIT_WRONG_USE, with the line, for a file that is no such table or has very many rows. A
/// quoted text ends on its line, and "" in it stands for a quote; empty lines are left out.
CSV_TABLE ReadCsvFile(const std::string& path);
