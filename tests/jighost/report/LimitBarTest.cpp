// Where a measured value stands beside its limits.
#include "jighost/report/LimitBar.h"

#include <gtest/gtest.h>

namespace {

struct BAR_CASE {
    double value;
    std::optional<double> min;
    std::optional<double> max;
    bool bWithin;
};

TEST(LimitBarTest, MarkIsInTheBandIfTheValueIsWithin) {
    static constexpr BAR_CASE CASES[] = {
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
    for (const BAR_CASE& each : CASES) {
        RECORDED_MEASUREMENT measurement;
        measurement.number = each.value;
        measurement.min = each.min;
        measurement.max = each.max;
        const BAR_PLACES places = BarPlaces(measurement);
        const bool bInBand = places.mark >= places.bandBegin && places.mark <= places.bandEnd;
        EXPECT_EQ(bInBand, each.bWithin) << each.value << " at " << places.mark;
        EXPECT_GE(places.mark, 1) << each.value;
        EXPECT_LE(places.mark, 99) << each.value;
        if (!each.bWithin) {
            const bool bBelow = each.min && each.value < *each.min;
            EXPECT_EQ(places.mark < places.bandBegin, bBelow) << each.value;
        }
    }
}

TEST(LimitBarTest, DrawnOnlyOfNumbersWithLimits) {
    RECORDED_MEASUREMENT measurement;
    measurement.max = 2;
    EXPECT_EQ(LimitBar(measurement).Text(), "");
    measurement.number = 3;
    EXPECT_NE(LimitBar(measurement).Text(), "");
    measurement.max.reset();
    EXPECT_EQ(LimitBar(measurement).Text(), "");
}

}  // namespace
