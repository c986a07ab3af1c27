// Sequences in wrong/ beside this: behind "#! " of a line stands what must be told of it.
#include <filesystem>
#include <sstream>

#include "tests/support/SupportJighost.h"

namespace fs = std::filesystem;

namespace {

TEST_F(JighostTest, WrongSequencesAreToldLineByLineAndNothingElse) {
    std::size_t files = 0;
    for (const auto& entry :
         fs::directory_iterator(fs::path(TEST_FOLDER) / "jighost/sequence/wrong")) {
        const std::string name = entry.path().filename().string();
        WriteFile(name, ReadFile(entry.path()));
        const std::string errors = RunTo(2, "sequence --check " + name).errors;
        ASSERT_FALSE(HasFailure()) << "it might run for ever";
        EXPECT_EQ(RunTo(2, "sequence " + name).errors, errors);
        ++files;
        std::istringstream lines(ReadFile(name));
        std::string line;
        std::ptrdiff_t told = 0;
        for (int number = 1; std::getline(lines, line); ++number) {
            const std::size_t mark = line.find("#! ");
            if (mark != std::string::npos) {
                const std::string place = name + ':' + std::to_string(number) + ": ";
                EXPECT_THAT(errors, testing::HasSubstr(place + line.substr(mark + 3)));
                ++told;
            }
        }
        EXPECT_GT(told, 0) << name;
        EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), told) << errors;
    }
    EXPECT_GT(files, 0U);
    EXPECT_FALSE(fs::exists("JigDll.log")) << "no operation has run";
}

}  // namespace
