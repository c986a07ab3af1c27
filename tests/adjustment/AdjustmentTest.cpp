// Optics data where they are cut.
#include "tests/support/Support.h"

namespace {

TEST_F(ModuleTest, PitchKeepsItsFractionAndLengthDropsIt) {
    struct {
        std::int32_t raw;
        double pitch, length;
    } const values[] = {
        {5360, 5.36, 5.0},     {-1500, -1.5, -1.0}, {44000, 44.0, 44.0},
        {44999, 44.999, 44.0}, {999, 0.999, 0.0},   {INT32_MIN, -2147483.648, -2147483.0},
    };
    for (const auto& value : values) {
        SimulatedBody::SetProperty(0x1000003, BytesOf(value.raw));
        SimulatedBody::SetProperty(0x1000004, BytesOf(value.raw));
        double result = 0;
        EXPECT_EQ(Run("GetSensorPixelPitch", &result), 0);
        EXPECT_EQ(result, value.pitch);
        EXPECT_EQ(Run("GetSensorOpticalLength", &result), 0);
        EXPECT_EQ(result, value.length);
    }
}

}  // namespace
