// Tables are lists, each row with its columns.
#include "tests/support/SupportTable.h"

#include <sstream>
#include <stdexcept>

#include "tests/support/Support.h"

YAML::Node TableRows(const std::string& name, std::size_t count) {
    YAML::Node rows = YAML::Load(ReadFile(std::filesystem::path(TEST_FOLDER) / name));
    if (rows.size() != count) {
        throw std::runtime_error(name + " has " + std::to_string(rows.size()) + " rows");
    }
    return rows;
}
