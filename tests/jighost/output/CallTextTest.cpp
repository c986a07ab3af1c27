// What people read of calls of the camera link.
#include "jighost/output/CallText.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

Link::CALL Request(
    const std::string& function, std::uint32_t id, std::int64_t value,
    const Link::Bytes& sent = {}) {
    Link::CALL call;
    call.function = function;
    call.id = id;
    call.value = value;
    call.sent = sent;
    return call;
}

Link::CALL Execution(std::int64_t value, bool bFromList) {
    Link::CALL call = Request("CEventProcedure::Execute", 0, value);
    call.name = "A";
    call.fromList = bFromList;
    return call;
}

Link::CALL Failed(Link::FAULT kind, std::int32_t code, const std::string& message) {
    Link::CALL call;
    call.received = {1};
    call.failure = Link::FAILURE{.kind = kind, .code = code, .message = message};
    return call;
}

TEST(JighostCallTextTest, RequestsAndAnswersTellWhatTheyHave) {
    std::string digits = "ab";
    for (int byte = 1; byte < 24; ++byte) {
        digits += " ab";
    }
    const std::pair<Link::CALL, std::string> requests[] = {
        {Request("CProperty::Get", 0x1000006, 8), "Get 0x1000006 8"},
        {Request("CProperty::Save", 0x1000006, 8), "Save 0x1000006"},
        {Request("CProperty::Set", 1, 24, Link::Bytes(24, 0xAB)), "Set 0x1 24: " + digits},
        {Request("CProperty::Set", 1, 25, Link::Bytes(25, 0xAB)),
         "Set 0x1 25: " + digits + " ... (25 bytes)"},
        {Request("CStrange::New\n", 1, 2), "New\\x0a"},
        {Execution(-1, false), "Execute A -1"},
        {Execution(-1, true), "Execute A (list)"},
    };
    for (const auto& [call, text] : requests) {
        EXPECT_EQ(RequestText(call), text);
    }
    using enum Link::FAULT;
    const std::pair<Link::CALL, std::string> failures[] = {
        {Failed(CAMERA_EXCEPTION, 0x2001, "m"), "failed: m (0x2001), 01"},
        {Failed(STANDARD_EXCEPTION, 0, "m\x1B"), "failed: standard exception, m\\x1b, 01"},
        {Failed(INTEGER, -7, ""), "failed: integer -7, 01"},
    };
    for (const auto& [call, text] : failures) {
        EXPECT_EQ(AnswerText(call), text);
        EXPECT_TRUE(IsFailedCall(call));
    }
    Link::CALL answered;
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
