// Where a run may write.
#include <filesystem>

#include "tests/support/Support.h"
#include "tests/support/SupportJighost.h"

namespace {

TEST_F(JighostTest, OutputThatWouldReplaceAnotherFileOfTheRunIsRefusedBeforeItRuns) {
    const std::string steps = "format: 1\nsteps:\n" + SET_OWNER + SAVE_OWNER;
    WriteFile("sequence.yaml", steps);
    WriteFile("BoardInf.ini", "[DL]\n");
    std::filesystem::create_hard_link("body.yaml", "hardlink");
    std::filesystem::copy_file(BuildFolder() / MODULE_FILE, "module.so");
    const std::string body = ReadFile("body.yaml");
    const std::pair<std::string, std::string> wrong[] = {
        {"--record sequence.yaml", "--record sequence.yaml is the same file as the sequence"},
        {"--record hardlink", "--record hardlink is the same file as --body"},
        {"--trace body.yaml", "--trace body.yaml is the same file as --body"},
        {"--trace .\\body.yaml", "--trace ./body.yaml is the same file as --body"},
        {"--record module.so --module module.so", "is the same file as the module"},
        {"--record JigDll.log", "--record JigDll.log is the same file as the module's log"},
        {"--record CameraLog", "--record CameraLog is the same file as the camera's log"},
        {"--trace errors.txt", "--trace errors.txt is the same file as standard error"},
        {"--trace BoardInf.ini", "is the same file as the installation's file"},
        {"--record .", "can't write .: Is a directory"},
        {"--record nowhere/run.json", "can't write nowhere/run.json: No such file"},
        {"--trace nowhere/run.jsonl", "can't write the trace nowhere/run.jsonl: No such file"},
    };
    for (const auto& [options, message] : wrong) {
        const std::string line = "sequence sequence.yaml --body body.yaml " + options;
        EXPECT_EQ(RunTo(2, line, message).output, "");
        EXPECT_TRUE(ReadFile("body.yaml") == body) << options;
    }
    EXPECT_EQ(ReadFile("sequence.yaml"), steps);
}

}  // namespace
