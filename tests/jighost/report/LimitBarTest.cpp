// Where a measured value stands beside its limits.
#include "jighost/report/LimitBar.h"

#include <gtest/gtest.h>

namespace {

using BarNumber = std::optional<double>;

RECORDED_MEASUREMENT BarMeasurement(BarNumber value, BarNumber min, BarNumber max) {
    RECORDED_MEASUREMENT measurement;
    measurement.number = value;
    measurement.min = min;
    measurement.max = max;
    return measurement;
}

TEST(LimitBarTest, MarkIsInTheBandIfTheValueIsWithin) {
    static constexpr std::tuple<double, BarNumber, BarNumber, bool> CASES[] = {
        {0, -4, 4, true},         {-4, -4, 4, true},
        {4, -4, 4, true},         {4.0000001, -4, 4, false},
        {-1e300, -4, 4, false},   {1.7e308, -1.7e308, 1.7e308, true},
        {5, 5, 5, true},          {4, 5, 5, false},
        {6, 5, 5, false},         {5, {}, 5, true},
        {-1e300, {}, 5, true},    {5.1, {}, 5, false},
        {1e300, {}, 5, false},    {0, {}, 0, true},
        {-3, {}, -2, true},       {-1, {}, -2, false},
        {7, 5, {}, true},         {4.9, 5, {}, false},
        {-1.7e308, 5, {}, false}, {-1.7e308, {}, -1.7e308, true},
    };
    for (const auto& [value, min, max, bWithin] : CASES) {
        const auto [begin, end, mark] = BarPlaces(BarMeasurement(value, min, max));
        EXPECT_TRUE(mark >= 1 && mark <= 99) << value << " at " << mark;
        EXPECT_EQ(mark >= begin && mark <= end, bWithin) << value << " at " << mark;
        EXPECT_EQ(mark < begin, min && value < *min) << value << " at " << mark;
    }
}

TEST(LimitBarTest, DrawnOnlyOfNumbersWithLimits) {
    EXPECT_EQ(LimitBar(BarMeasurement({}, {}, 2)).Text(), "");
    EXPECT_EQ(LimitBar(BarMeasurement(3, {}, {})).Text(), "");
    EXPECT_NE(LimitBar(BarMeasurement(3, {}, 2)).Text(), "");
}

}  // namespace
