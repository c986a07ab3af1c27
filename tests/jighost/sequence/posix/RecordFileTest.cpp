// The file of a record, and what may become of it while the run goes on.
#include "jighost/sequence/RecordFile.h"

#include <csignal>
#include <filesystem>

#include "jighost/records/RunRecordReader.h"
#include "jighost/text/HostError.h"
#include "tests/support/FileFaults.h"
#include "tests/support/Support.h"

namespace {

class RecordFileTest : public testing::Test {
  protected:
    void AddStep() {
        m_Record.steps.emplace_back();
        m_File.AddStep(m_Record);
    }
    /// What a kill would leave now.
    static std::size_t StepsLeft() { return ReadRunRecord("run.json").steps.size(); }

    FreshFolder m_Folder;
    RUN_RECORD m_Record;
    RecordFile m_File{{"run.json", ""}};
};

TEST_F(RecordFileTest, StepIsAddedBehindTheOthers) {
    m_File.Begin(m_Record);
    EXPECT_EQ(StepsLeft(), 0U);
    AddStep();
    const std::string one = ReadFile("run.json");
    std::filesystem::create_hard_link("run.json", "same");
    AddStep();
    EXPECT_THAT(ReadFile("same"), testing::StartsWith(one));
    EXPECT_EQ(ReadFile("same"), ReadFile("run.json")) << "the file is written anew";
    EXPECT_EQ(StepsLeft(), 2U);
}

TEST_F(RecordFileTest, WhateverBecomesOfTheFileMeanwhileLosesNoStep) {
    m_File.Begin(m_Record);
    AddStep();
    std::filesystem::remove("run.json");
    AddStep();
    EXPECT_EQ(StepsLeft(), 2U) << "the file was gone";
    WriteFile("run.json", "another run's\n");
    AddStep();
    EXPECT_EQ(StepsLeft(), 3U) << "another run had taken its place";
    auto* const pFormer = std::signal(SIGXFSZ, SIG_IGN);
    {
        const FileFault full = FileSizeLimit(std::filesystem::file_size("run.json") + 10);
        AddStep();
        EXPECT_EQ(StepsLeft(), 3U) << "the line is cut off";
        EXPECT_THROW(m_File.Finish(m_Record), HostError);
        EXPECT_EQ(StepsLeft(), 3U);
    }
    std::signal(SIGXFSZ, pFormer);
    AddStep();
    EXPECT_EQ(StepsLeft(), 5U) << "there is room again";
    m_Record.verdict = VERDICT::PASSED;
    m_File.Finish(m_Record);
    EXPECT_EQ(ReadFile("run.json"), RunRecordText(m_Record));
}

TEST_F(RecordFileTest, RunThatComesSecondIsRefused) {
    RUN_RECORD other;
    other.number = "other";
    std::optional<RecordFile> second;
    const auto begin = [&] { second.emplace(RECORD_PLACE{"run.json", ""}).Begin(other); };
    m_File.Begin(m_Record);
    EXPECT_THROW(begin(), HostError);
    AddStep();
    EXPECT_EQ(StepsLeft(), 1U);
    // Without its file the first run has no right to the place.
    std::filesystem::remove("run.json");
    begin();
    AddStep();
    EXPECT_THROW(m_File.Finish(m_Record), HostError);
    EXPECT_EQ(ReadRunRecord("run.json").number, "other");
    second->Finish(other);
    m_File.Finish(m_Record);
    EXPECT_EQ(StepsLeft(), 2U);
}

}  // namespace
