// The file prefix, computed from the serial number.
#include "tests/support/Support.h"

namespace {

TEST_F(ModuleTest, FilePrefixStepsThroughItsCharactersInEachPlace) {
    const auto expectPrefix = [this](std::uint32_t serialNo, const std::string& prefix) {
        // The body ID property holds the upper word of the body number first.
        SimulatedBody::SetProperty(0x1000006, BytesOf(std::uint64_t{serialNo} << 32));
        EXPECT_EQ(Run("SetFilePrefix"), 0);
        EXPECT_EQ(
            Hex(SimulatedBody::WorkingValue(0x1000007)),
            Hex({prefix.begin(), prefix.end()}) + " 00 00 00 00");
    };
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
            expectPrefix(i * step, prefix);
        }
    }
    expectPrefix(12345, "YA5A");
    expectPrefix(12959, "ZZ9A");
    expectPrefix(103679, "ZZ9H");
}

}  // namespace
