// Body ID: the packing of its groups, and what stands in the shared block.
#include "identity/BodyID.h"

#include <sstream>

#include "tests/support/Support.h"
#include "tests/support/SupportBlocks.h"

namespace {

const std::uint32_t PROP_BODY_ID = 0x1000006;
const std::uint32_t BLOCK_SIZE = 8;

std::string Groups(const BODY_ID_T& bodyID) {
    std::ostringstream text;
    text << bodyID.ManufactureMonth << '/' << bodyID.CodePair << '/' << bodyID.CodeDigitHigh << '/'
         << bodyID.CodeDigitLow << '/' << bodyID.SerialNo;
    return text.str();
}

class BodyIDTest : public ModuleTest {
  protected:
    BodyIDTest() { EXPECT_EQ(m_Holder.Open("BODYID", BLOCK_SIZE), "created"); }

    std::string Block() { return m_Holder.Read(); }
    void FillBlock() { m_Holder.Write({1, 2, 3, 4, 5, 6, 7, 8}); }

  private:
    BlockHolder m_Holder;
};

struct PACKING {
    const char* name;
    BODY_ID_T written;
    const char* bytes;
    BODY_ID_T readBack;
};

const PACKING PACKINGS[] = {
    {"all groups", {1507, 42, 3, 9, 12345}, "b5 0d 00 00 f9 5d a9 be", {1507, 42, 3, 9, 12345}},
    {"zeros", {0, 0, 0, 0, 0}, "00 00 00 00 00 00 00 00", {0, 0, 0, 0, 0}},
    {"carry into the low digit", {0, 0, 0, 1, 1000000}, "00 00 00 00 80 84 1e 00", {0, 0, 0, 2, 0}},
    {"the pair needs 64 bits",
     {0, 99, 9, 9, 999999},
     "02 00 00 00 ff e3 0b 54",
     {0, 99, 9, 9, 999999}},
    // 500 times 10,000,000 is 705,032,704 in 32 bits.
    {"a digit wraps in 32 bits", {0, 0, 500, 0, 0}, "00 00 00 00 00 f2 05 2a", {0, 7, 0, 5, 32704}},
    {"all 64 bits",
     {1844674407, 37, 0, 9, 551615},
     "ff ff ff ff ff ff ff ff",
     {1844674407, 37, 0, 9, 551615}},
};

TEST_F(BodyIDTest, PacksAndUnpacksTheGroups) {
    for (const PACKING& packing : PACKINGS) {
        SCOPED_TRACE(packing.name);
        BODY_ID_T bodyID = packing.written;
        EXPECT_EQ(Run("SetBodyID", &bodyID), 0);
        EXPECT_EQ(Groups(bodyID), Groups(packing.written));
        EXPECT_THAT(Calls(), ElementsAre(std::string("Set 0x1000006 8: ") + packing.bytes));
        EXPECT_EQ(Log(), Frame("SetBodyID", 0));
        EXPECT_EQ(Block(), packing.bytes);

        FillBlock();
        EXPECT_EQ(Run("GetBodyID", &bodyID), 0);
        EXPECT_EQ(Groups(bodyID), Groups(packing.readBack));
        EXPECT_THAT(Calls(), ElementsAre("Get 0x1000006 8"));
        EXPECT_EQ(Block(), packing.bytes);
    }
}

TEST_F(BodyIDTest, LogsTheSerialNumberWithoutATag) {
    SimulatedBody::SetProperty(PROP_BODY_ID, {0xB5, 0x0D, 0, 0, 0xF9, 0x5D, 0xA9, 0xBE});
    BODY_ID_T bodyID{};
    EXPECT_EQ(Run("GetBodyID", &bodyID), 0);
    EXPECT_EQ(Log(), Frame("GetBodyID", 0, "> BodyID - 12345\n"));
}

TEST_F(BodyIDTest, StaysUnsavedUntilItIsSaved) {
    SimulatedBody::SetProperty(PROP_BODY_ID, SimulatedBody::Bytes(8, 0));
    BODY_ID_T bodyID{0, 0, 0, 0, 7};
    EXPECT_EQ(Run("SetBodyID", &bodyID), 0);
    EXPECT_EQ(Hex(SimulatedBody::SavedValue(PROP_BODY_ID)), "00 00 00 00 00 00 00 00");

    FillBlock();
    EXPECT_EQ(Run("SaveBodyID"), 0);
    EXPECT_THAT(Calls(), ElementsAre("Save 0x1000006"));
    EXPECT_EQ(Log(), Frame("SaveBodyID", 0));
    EXPECT_EQ(Hex(SimulatedBody::SavedValue(PROP_BODY_ID)), "00 00 00 00 07 00 00 00");
    EXPECT_EQ(Block(), "01 02 03 04 05 06 07 08");
}

TEST_F(BodyIDTest, NullPointerTouchesNeitherCameraNorBlock) {
    FillBlock();
    for (const char* pszName : {"SetBodyID", "GetBodyID"}) {
        EXPECT_EQ(Run(pszName, nullptr), 3);
        EXPECT_THAT(Calls(), IsEmpty());
        EXPECT_EQ(Log(), FailedFrame(pszName, 3, "[VALU] pBodyID"));
    }
    EXPECT_EQ(Block(), "01 02 03 04 05 06 07 08");
}

TEST_F(BodyIDTest, FailedCallLeavesBlockAndRecord) {
    const BODY_ID_T before{1, 2, 3, 4, 5};
    FillBlock();
    for (const char* pszName : {"SetBodyID", "GetBodyID"}) {
        BODY_ID_T bodyID = before;
        SimulatedBody::FailCall(1, {.code = 0x2003, .message = "[VALU] Body ID"});
        EXPECT_EQ(Run(pszName, &bodyID), 0x2003);
        EXPECT_EQ(Groups(bodyID), Groups(before));
        EXPECT_EQ(Log(), FailedFrame(pszName, 0x2003, "[VALU] Body ID"));
    }
    EXPECT_EQ(Block(), "01 02 03 04 05 06 07 08");
}

}  // namespace
