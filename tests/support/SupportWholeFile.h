// What the tests of files that are replaced as a whole have in common.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <system_error>

#include "platform/WholeFile.h"
#include "tests/support/Support.h"

class WholeFileTest : public testing::Test {
  protected:
    static void Replace(const std::filesystem::path& path, OUTLASTS outlasts = OUTLASTS::KILLS) {
        CheckReplaceable(path);
        ReplaceFile(path, "new", outlasts);
    }

    /// Both ways of asking give this error, and nothing is made.
    static void ExpectRefused(const std::filesystem::path& path, int error) {
        const auto errorOf = [](const auto& work) {
            try {
                work();
                return 0;
            } catch (const std::system_error& e) {
                return e.code().value();
            }
        };
        EXPECT_EQ(errorOf([&] { CheckReplaceable(path); }), error) << path;
        EXPECT_EQ(errorOf([&] { ReplaceFile(path, "new", OUTLASTS::KILLS); }), error) << path;
    }

  private:
    FreshFolder m_Folder;
};
