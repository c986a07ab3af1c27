// A second process that has started further ones.
#include "platform/Process.h"

#include <gtest/gtest.h>

#include <csignal>

TEST(ProcessTest, ProcessIsAtItsEndWhateverItHasStarted) {
    Process process("/bin/sh", {"-c", "sleep 10000 & echo $!"});
    const std::optional<std::string> started = process.ReadLine();
    ASSERT_TRUE(started);
    process.End();
    EXPECT_EQ(process.ReadLine(), std::nullopt);
    kill(std::stoi(*started), SIGKILL);
}
