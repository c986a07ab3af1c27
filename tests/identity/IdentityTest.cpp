// Body identity without the body ID: the file prefix, an owner name that ends early, error lines
// without their prefix.
#include "tests/support/Support.h"

namespace {

class IdentityTest : public ModuleTest {
  protected:
    /// The body ID property holds the upper word of the body number first.
    static void SetBodyNumber(std::uint64_t number) {
        SimulatedBody::SetProperty(0x1000006, BytesOf((number >> 32) | (number << 32)));
    }

    void ExpectFilePrefix(std::uint32_t serialNo, const std::string& prefix) {
        SetBodyNumber(serialNo);
        EXPECT_EQ(Run("SetFilePrefix"), 0);
        EXPECT_EQ(
            Hex(SimulatedBody::WorkingValue(0x1000007)),
            Hex({prefix.begin(), prefix.end()}) + " 00 00 00 00");
    }
};

TEST_F(IdentityTest, FilePrefixStepsThroughItsCharactersInEachPlace) {
    const struct {
        std::size_t place;
        std::uint32_t step;
        std::string characters;
    } places[] = {
        {0, 360, "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"},
        {1, 10, "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ"},
        {2, 1, "0123456789"},
        {3, 12960, "ABCDEFGH"},
    };
    for (const auto& [place, step, characters] : places) {
        for (std::uint32_t i = 0; i < characters.size(); ++i) {
            std::string prefix = "000A";
            prefix[place] = characters[i];
            ExpectFilePrefix(i * step, prefix);
        }
    }
    ExpectFilePrefix(12345, "YA5A");
    ExpectFilePrefix(12959, "ZZ9A");
    ExpectFilePrefix(103679, "ZZ9H");
}

TEST_F(IdentityTest, FilePrefixRefusesWhatIsNoSerialNumberForIt) {
    SetBodyNumber(103680);
    Expect(
        "SetFilePrefix", 35, {"Get 0x1000006 8"},
        FailedFrame(
            "SetFilePrefix", 35, "[VALU] BodyID.SerialNo",
            Frame("GetBodyID", 0, "> BodyID - 103680\n") +
                "> [VALU] BodyID.ManufactureMonth - 0\n"
                "> [VALU] BodyID.SerialNo         - 103680\n"));
}

TEST_F(IdentityTest, OwnerNameIsLoggedUpToItsZeroAndTravelsWhole) {
    SimulatedBody::Bytes name(32, 'x');
    name[1] = 0;
    SimulatedBody::SetProperty(0x2000004, name);
    SimulatedBody::Bytes read(32);
    Expect(
        "GetOwnerName", 0, {"Get 0x2000004 32"},
        Frame("GetOwnerName", 0, "> [FUNC] pOwnerName - x\n"), read.data());
    EXPECT_EQ(read, name);
}

TEST_F(IdentityTest, UniqueIDErrorLinesHaveNoPrefix) {
    SimulatedBody::Bytes argument(20);
    for (const std::string verb : {"Copy", "Save", "Get"}) {
        const std::string operation = verb + "WindowsVistaUniqueID";
        SimulatedBody::FailCall(1);
        EXPECT_EQ(Run(operation, argument.data()), LINK_FAILURE);
        EXPECT_EQ(Log(), Frame(operation, LINK_FAILURE, "[ERR!] - " + LINK_MESSAGE + "\n"));
        SimulatedBody::FailCall(1, {.kind = SimulatedBody::FAULT::STANDARD_EXCEPTION});
        EXPECT_EQ(Run(operation, argument.data()), 33);
        EXPECT_EQ(Log(), Frame(operation, 33, "[ERR!] UnExpected Exception\n"));
    }
}

}  // namespace
