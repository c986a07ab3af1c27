// A measured value as a mark on a bar, on which its limits are a band.
#pragma once

#include "jighost/records/RunRecord.h"
#include "jighost/report/Markup.h"

/// Places on a bar, in hundredths of its length.
struct BAR_PLACES {
    double bandBegin = 0;
    double bandEnd = 0;
    double mark = 0;
};

/// A mark outside of the limits stands visibly beside the band, however near or far it is. The
/// measurement has a number and at least one limit.
BAR_PLACES BarPlaces(const RECORDED_MEASUREMENT& measurement);

/// How far a value lies between two others: 0 at `low`, 1 at `high`. Between two that are the same,
/// less than 0, more than 1, or 0.5.
double ShareOf(double value, double low, double high);

/// Nothing of a measurement without number or limits.
Markup LimitBar(const RECORDED_MEASUREMENT& measurement);
