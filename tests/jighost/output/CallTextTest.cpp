// What people read of calls of the camera link.
#include "jighost/output/CallText.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using Link::CALL;
using Link::FAILURE;

CALL Request(
    const std::string& function, std::uint32_t id, std::int64_t value,
    const Link::Bytes& sent = {}) {
    CALL call;
    call.function = function;
    call.id = id;
    call.value = value;
    call.sent = sent;
    return call;
}

TEST(JighostCallTextTest, RequestsAndAnswersTellWhatTheyHave) {
    const std::string bytes =
        "ab ab ab ab ab ab ab ab ab ab ab ab ab ab ab ab ab ab ab ab ab ab ab ab";
    CALL execution = Request("CEventProcedure::Execute", 0, -1);
    execution.name = "A";
    CALL ofList = execution;
    ofList.fromList = true;
    const std::pair<CALL, std::string> requests[] = {
        {Request("CProperty::Get", 0x1000006, 8), "Get 0x1000006 8"},
        {Request("CProperty::Save", 0x1000006, 8), "Save 0x1000006"},
        {Request("CProperty::Set", 1, 24, Link::Bytes(24, 0xAB)), "Set 0x1 24: " + bytes},
        {Request("CProperty::Set", 1, 25, Link::Bytes(25, 0xAB)),
         "Set 0x1 25: " + bytes + " ... (25 bytes)"},
        {Request("CStrange::New\n", 1, 2), "New\\x0a"},
        {execution, "Execute A -1"},
        {ofList, "Execute A (list)"},
    };
    for (const auto& [call, text] : requests) {
        EXPECT_EQ(RequestText(call), text);
    }
    using enum Link::FAULT;
    const std::pair<FAILURE, std::string> failures[] = {
        {{.kind = CAMERA_EXCEPTION, .code = 0x2001, .message = "m"}, "m (0x2001)"},
        {{.kind = STANDARD_EXCEPTION, .message = "m\x1B"}, "standard exception, m\\x1b"},
        {{.kind = INTEGER, .code = -7}, "integer -7"},
    };
    for (const auto& [failure, text] : failures) {
        CALL call;
        call.received = {1};
        call.failure = failure;
        EXPECT_EQ(AnswerText(call), "failed: " + text + ", 01");
        EXPECT_TRUE(IsFailedCall(call));
    }
    CALL answered;
    EXPECT_EQ(AnswerText(answered), "done");
    answered.received = {1, 2};
    answered.sizeLeft = 3;
    answered.result = 4;
    EXPECT_EQ(AnswerText(answered), "01 02, size left 3, result 4");
    EXPECT_FALSE(IsFailedCall(answered));
    answered.result = 7;
    EXPECT_TRUE(IsFailedCall(answered)) << "an odd word";
}

}  // namespace
