// Commands to the second process and its answers.
#include "tests/support/SupportBlocks.h"

#include "tests/support/Support.h"

BlockHolder::BlockHolder() : m_Process((BuildFolder() / BLOCK_HOLDER_FILE).string(), {}) {}

std::string BlockHolder::Open(const std::string& name, std::uint32_t size) {
    return Do("open " + name + " " + std::to_string(size));
}

void BlockHolder::Write(const SimulatedBody::Bytes& bytes) {
    EXPECT_EQ(Do("write " + Hex(bytes)), "done");
}

void BlockHolder::WriteText(const std::string& text) {
    SimulatedBody::Bytes bytes(text.begin(), text.end());
    bytes.push_back(0);
    Write(bytes);
}

std::string BlockHolder::Do(const std::string& command) {
    Begin(command);
    return Answer();
}

std::string BlockHolder::Answer() {
    return m_Process.ReadLine().value_or("the process is gone");
}
