// Body ID: the packing of its groups, and what stands in the shared block.
#include "identity/BodyID.h"

#include <sstream>

#include "tests/support/Support.h"
#include "tests/support/SupportBlocks.h"

namespace {

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
        EXPECT_EQ(Block(), packing.bytes);

        FillBlock();
        EXPECT_EQ(Run("GetBodyID", &bodyID), 0);
        EXPECT_EQ(Groups(bodyID), Groups(packing.readBack));
        EXPECT_EQ(Block(), packing.bytes);
    }
}

TEST_F(BodyIDTest, BlockStaysAsItWasWhereNothingWasReadOrWritten) {
    FillBlock();
    BODY_ID_T bodyID{1, 2, 3, 4, 5};
    for (const char* pszName : {"SetBodyID", "GetBodyID"}) {
        EXPECT_EQ(Run(pszName, nullptr), 3);
        SimulatedBody::FailCall(1);
        EXPECT_EQ(Run(pszName, &bodyID), LINK_FAILURE);
    }
    EXPECT_EQ(Run("SaveBodyID"), 0);
    EXPECT_EQ(Block(), "01 02 03 04 05 06 07 08");
}

}  // namespace
