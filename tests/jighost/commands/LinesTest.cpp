// Command lines and how they end, by the table beside this.
#include <filesystem>
#include <map>

#include "tests/support/SupportJighost.h"
#include "tests/support/SupportTable.h"

using testing::HasSubstr;

namespace {

/// The files of the current directory, but for the standard error of the last run.
std::map<std::filesystem::path, std::string> FilesHere() {
    std::map<std::filesystem::path, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(".")) {
        files[entry.path()] = entry.is_directory() ? "" : ReadFile(entry.path());
    }
    files.erase("./errors.txt");
    return files;
}

TEST(JighostLinesTest, EndAsTheirTableTells) {
    for (const YAML::Node& group : TableRows("jighost/commands/lines.yaml", 18)) {
        const FreshFolder folder;
        RunTo(0, "body new body.yaml");
        for (const auto& file : group["files"]) {
            const auto path = std::filesystem::path(".") / file.first.as<std::string>();
            std::filesystem::create_directories(path.parent_path());
            WriteFile(path, file.second.as<std::string>());
        }
        for (const YAML::Node& row : group["lines"]) {
            const auto text = [&](std::size_t place) { return row[place].as<std::string>(""); };
            const auto before = FilesHere();
            const JIGHOST_RUN run = RunTo(row[0].as<int>(), text(1), text(2));
            EXPECT_THAT(run.output, HasSubstr(text(3))) << text(1);
            if (run.exitCode == 2) {
                EXPECT_EQ(run.output, "") << text(1);
                EXPECT_THAT(run.errors, testing::StartsWith("jighost: ")) << text(1);
                EXPECT_TRUE(FilesHere() == before) << text(1);
            }
        }
    }
}

}  // namespace
