// Two limits take the middle of the bar, a single one leaves it open on the other side.
#include "jighost/report/LimitBar.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "jighost/report/Words.h"

// In hundredths: what is left beside the band, and how far from band and ends a mark stays.
static constexpr double BESIDE = 20;
static constexpr double NEAREST = 4;
static constexpr double FARTHEST = 2;

// In halves: the difference of two numbers may be too great for one.
double ShareOf(double value, double low, double high) {
    const double half = high / 2 - low / 2;
    if (half > 0) {
        return (value / 2 - low / 2) / half;
    }
    return value < low ? -1 : value > high ? 2 : 0.5;
}

static double MarkPlace(double share, double begin, double end) {
    const double place = begin + (end - begin) * share;
    if (share < 0) {
        return std::clamp(place, FARTHEST, begin - NEAREST);
    }
    return share > 1 ? std::clamp(place, end + NEAREST, 100 - FARTHEST) : place;
}

/// With zero on the bar, as what the value is compared with.
static BAR_PLACES PlacesBelow(double max, double value) {
    double low = std::min({value, max, 0.0});
    if (low == max) {
        low = std::max(max - std::abs(max / 2) - 1, std::numeric_limits<double>::lowest());
    }
    const double end = 100 - BESIDE;
    return {0, end, std::max(MarkPlace(ShareOf(value, low, max), FARTHEST, end), FARTHEST)};
}

BAR_PLACES BarPlaces(const RECORDED_MEASUREMENT& measurement) {
    const double value = *measurement.number;
    if (!measurement.min) {
        return PlacesBelow(*measurement.max, value);
    }
    if (!measurement.max) {
        const BAR_PLACES mirrored = PlacesBelow(-*measurement.min, -value);
        return {100 - mirrored.bandEnd, 100, 100 - mirrored.mark};
    }
    const double share = ShareOf(value, *measurement.min, *measurement.max);
    return {BESIDE, 100 - BESIDE, MarkPlace(share, BESIDE, 100 - BESIDE)};
}

Markup LimitBar(const RECORDED_MEASUREMENT& measurement) {
    Markup bar;
    if (!measurement.number || !(measurement.min || measurement.max)) {
        return bar;
    }
    const BAR_PLACES places = BarPlaces(measurement);
    bar << R"(<svg class="bar" role="img" aria-label=")"_tag << ValueText(measurement) << ", "
        << DemandText(measurement)
        << R"("><rect class="scale" x="0" y="9" width="100%" height="2"/><rect class="band" x=")"_tag
        << places.bandBegin << R"(%" y="4" width=")"_tag << places.bandEnd - places.bandBegin
        << R"(%" height="12"/><svg class="value )"_tag
        << (measurement.bWithin ? "passed" : "failed") << R"(" x=")"_tag << places.mark
        << R"(%" y="10"><path d="M0-9L5 0L0 9L-5 0Z"/></svg></svg>)"_tag;
    return bar;
}
