// What stands in a file's place and is none.
#include <filesystem>

#include "tests/support/SupportJighost.h"

void MakeIrregular(const std::string& path) {
    EXPECT_TRUE(std::filesystem::create_directory(path));
}
